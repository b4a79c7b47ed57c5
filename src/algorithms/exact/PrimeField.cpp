#include "algorithms/exact/PrimeField.h"

#include <algorithm>
#include <bit>

#include "numbers/QQStorage.h"

namespace starsift {

namespace {

bool isPrime(std::uint32_t number) {
  if (number < 4) return number > 1;
  for (std::uint32_t divisor = 2; divisor * divisor <= number; ++divisor)
    if (number % divisor == 0) return false;
  return true;
}

}  // namespace

std::size_t PrimeField::digitBits() const {
  return static_cast<std::size_t>(std::bit_width(prime_)) - 1;
}

std::uint32_t PrimeField::reduce(std::uint64_t value) const {
  // The quotient is at most one too small: the two roundings together lose less than 2.
  const auto quotient =
      static_cast<std::uint64_t>((static_cast<UInt128>(value) * reciprocal_) >> 64U);
  const std::uint64_t rest = value - quotient * prime_;
  return static_cast<std::uint32_t>(rest < prime_ ? rest : rest - prime_);
}

std::uint32_t PrimeField::inverse(std::uint32_t a) const {
  // Fermat: a^(prime - 2).
  std::uint32_t result = 1;
  for (std::uint32_t exponent = prime_ - 2; exponent != 0; exponent >>= 1U) {
    if (exponent % 2 == 1) result = multiply(result, a);
    a = multiply(a, a);
  }
  return result;
}

std::uint32_t PrimeField::residue(const IntegerRow& row, std::size_t column) const {
  if (!row.isSmall()) return residue(row.big(column));
  const std::int64_t rest = row.small(column) % static_cast<std::int64_t>(prime_);
  return static_cast<std::uint32_t>(rest < 0 ? rest + prime_ : rest);
}

std::uint32_t nextPrime(std::uint32_t number) {
  do ++number;
  while (!isPrime(number));
  return number;
}

void LazySum::assign(const IntegerRow& row) {
  for (std::size_t j = 0; j < sums_.size(); ++j) sums_[j] = field_.residue(row, j);
  pending_ = 0;
}

void LazySum::assign(std::span<const std::uint32_t> row) {
  std::copy(row.begin(), row.end(), sums_.begin());
  pending_ = 0;
}

void LazySum::clear() {
  std::fill(sums_.begin(), sums_.end(), 0);
  pending_ = 0;
}

void LazySum::addMultiple(std::uint64_t factor, std::span<const std::uint32_t> row,
                          std::size_t first) {
  if (pending_ == mostPending) reduce();
  std::uint64_t* const sums = sums_.data() + first;
  for (std::size_t j = 0; j < row.size(); ++j) sums[j] += factor * row[j];
  ++pending_;
}

void LazySum::reduce() {
  for (std::uint64_t& sum : sums_) sum = field_.reduce(sum);
  pending_ = 0;
}

}  // namespace starsift

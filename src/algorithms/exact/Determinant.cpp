#include "algorithms/exact/Determinant.h"

#include <algorithm>

#include "algorithms/exact/ModularElimination.h"

namespace starsift {

namespace {

/// Bits that each prime, from the first one on, adds to the modulus at least.
constexpr std::size_t bitsOfPrime = 29;

std::uint32_t residue(const IntegerMatrix& matrix, const PrimeField& field) {
  ModularMatrix residues;
  residues.reserve(matrix.size());
  for (const std::vector<ZZ>& row : matrix) {
    std::vector<std::uint32_t>& entries = residues.emplace_back();
    entries.reserve(row.size());
    for (const ZZ& entry : row) entries.push_back(field.residue(entry));
  }
  return determinant(residues, field);
}

std::size_t productBits(const IntegerMatrix& rows) {
  std::size_t bits = 0;
  for (const std::vector<ZZ>& row : rows) bits += normBits(row);
  return bits;
}

/// Number of primes that distinguish all integers of magnitude up to 2^bits.
std::size_t primesFor(std::size_t bits) {
  return (bits + 1) / bitsOfPrime + 1;
}

/// An integer from its residues modulo one prime after another.
class ChineseRemainder {
 public:
  void add(std::uint32_t residue, const PrimeField& field) {
    const std::uint32_t difference =
        field.reduce(std::uint64_t{residue} + field.negate(field.residue(value_)));
    const std::uint32_t digit = field.multiply(difference, field.inverse(field.residue(modulus_)));
    mpz_addmul_ui(value_.get(), modulus_.get(), digit);
    mpz_mul_ui(modulus_.get(), modulus_.get(), field.prime());
  }

  /// The integer of least magnitude with these residues.
  ZZ value() const {
    const ZZ negative = value_ - modulus_;
    return abs(negative) < value_ ? negative : value_;
  }

 private:
  ZZ value_ = ZZ::zero();
  ZZ modulus_ = ZZ::one();
};

}  // namespace

std::size_t determinantBits(const IntegerMatrix& matrix) {
  return std::min(productBits(matrix), productBits(transposed(matrix, matrix.size())));
}

ZZ determinant(const IntegerMatrix& matrix) {
  ChineseRemainder remainder;
  std::uint32_t prime = firstPrime;
  for (std::size_t i = primesFor(determinantBits(matrix)); i > 0; --i) {
    const PrimeField field(prime);
    remainder.add(residue(matrix, field), field);
    prime = nextPrime(prime);
  }
  return remainder.value();
}

bool hasUnitDeterminant(const IntegerMatrix& matrix) {
  const std::uint32_t sign = residue(matrix, PrimeField(firstPrime));
  if (sign != 1 && sign != firstPrime - 1) return false;
  std::uint32_t prime = firstPrime;
  for (std::size_t i = primesFor(determinantBits(matrix)); i > 1; --i) {
    prime = nextPrime(prime);
    if (residue(matrix, PrimeField(prime)) != (sign == 1 ? 1 : prime - 1)) return false;
  }
  return true;
}

}  // namespace starsift

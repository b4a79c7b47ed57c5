// Arithmetic modulo a prime in machine words.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "algorithms/exact/IntegerRow.h"

namespace starsift {

/// The integers modulo a prime; residues lie in 0..prime - 1.
class PrimeField {
 public:
  /// Primes stay below this, so that fifteen products and a residue fit in 64 bits.
  static constexpr std::uint32_t limit = std::uint32_t{1} << 30;

  /// `prime` is a prime below `limit`.
  explicit PrimeField(std::uint32_t prime)
      : prime_(prime), reciprocal_(~std::uint64_t{0} / prime) {}

  std::uint32_t prime() const { return prime_; }
  /// Bits that one digit adds to a number at least: the logarithm, rounded down.
  std::size_t digitBits() const;

  std::uint32_t reduce(std::uint64_t value) const;
  std::uint32_t multiply(std::uint32_t a, std::uint32_t b) const {
    return reduce(std::uint64_t{a} * b);
  }
  std::uint32_t negate(std::uint32_t a) const { return a == 0 ? 0 : prime_ - a; }
  /// a != 0.
  std::uint32_t inverse(std::uint32_t a) const;

  std::uint32_t residue(const ZZ& value) const {
    return static_cast<std::uint32_t>(mpz_fdiv_ui(value.get(), prime_));
  }
  std::uint32_t residue(const IntegerRow& row, std::size_t column) const;

 private:
  std::uint32_t prime_;
  std::uint64_t reciprocal_;  // 2^64 / prime, rounded down or, for 2, one less
};

/// Where the search for a prime that isn't unlucky begins: nearly 30 bits a digit, and
/// millions of primes follow below PrimeField::limit. No input of feasible size has
/// minors that all of them divide.
constexpr std::uint32_t firstPrime = 1'000'000'007;

/// The least prime above `number`, which is at most 2^30 - 36, so that there is one
/// below PrimeField::limit.
std::uint32_t nextPrime(std::uint32_t number);

/// A vector over a prime field to which multiples of other vectors are added; entries are
/// reduced only before the next sum might overflow.
class LazySum {
 public:
  LazySum(const PrimeField& field, std::size_t size) : field_(field), sums_(size) {}

  std::uint32_t operator[](std::size_t column) const { return field_.reduce(sums_[column]); }

  void assign(const IntegerRow& row);
  /// Stores residues.
  void assign(std::span<const std::uint32_t> row);
  void clear();
  /// Adds factor * row[j] to entry first + j for all j; both are residues.
  void addMultiple(std::uint64_t factor, std::span<const std::uint32_t> row, std::size_t first);

 private:
  static constexpr int mostPending = 15;

  void reduce();

  PrimeField field_;
  std::vector<std::uint64_t> sums_;
  int pending_ = 0;  // products in each entry
};

}  // namespace starsift

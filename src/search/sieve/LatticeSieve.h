// The short vectors of a lattice, found by sieving.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <unordered_set>
#include <vector>

#include "search/enumeration/Blocks.h"
#include "search/sieve/SieveBucket.h"
#include "search/sieve/SimHash.h"

namespace starsift {

/// A basis by its coordinates in the orthonormal directions of its Gram-Schmidt vectors, the last
/// one first: row i, 0-based, has 0 before position i and the length of its Gram-Schmidt vector
/// there. Square, d x d.
using SieveBasis = std::vector<std::vector<double>>;

/// log of the length that the Gaussian heuristic expects of the shortest vector of the lattice of
/// the rows 0..count-1; 1 <= count <= d.
double logGaussianLength(const SieveBasis& basis, std::size_t count);

/// Sieves the lattices of the rows 0..k for growing k: vectors of one are lifted to the next by the
/// nearest plane, and the longest of the list are replaced by differences of others that are
/// shorter, until the list holds half of the vectors, up to sign, that the Gaussian heuristic
/// expects within sqrt(4/3) of the length of the shortest. Pairs are looked for among the vectors
/// near a random one.
///
/// Which vectors are found depends on the basis and the seed alone.
///
/// L. Ducas, EUROCRYPT 2018; M. R. Albrecht et al. (G6K), EUROCRYPT 2019; A. Becker, N. Gama,
/// A. Joux, eprint 2015/522.
class LatticeSieve {
 public:
  /// Multiples of the rows of the basis.
  using Coefficients = std::vector<std::int16_t>;

  /// The basis has a row at least and should be reduced; the lengths of its Gram-Schmidt vectors
  /// are positive.
  LatticeSieve(const SieveBasis& basis, std::uint64_t seed);

  /// While dimension() < d: sieves the lattice of one row more, at first of as many as make a list.
  /// False if `mayGoOn`, called between steps of some milliseconds, ended it. Of a basis far from
  /// reduced the list may have fewer short vectors.
  bool grow(const std::function<bool()>& mayGoOn);

  /// Rows of the lattice that was sieved, 0 before grow().
  std::size_t dimension() const { return size_; }
  /// Vectors of the list.
  std::size_t count() const { return lengths_.size(); }
  /// Of vector i of the list, 0-based, d multiples; no vector is 0, and no two are the same up to
  /// sign.
  const Coefficients& coefficients(std::size_t i) const { return coefficients_[i]; }
  /// Of vector i of the list, in the unit of the basis, rounded.
  double squaredLength(std::size_t i) const { return unit_ * unit_ * lengths_[i]; }

  /// Vectors of the list for a lattice of this dimension.
  static std::size_t listSize(std::size_t dimension);

 private:
  /// Lifts all vectors to the lattice with one row more, and adds that row.
  void extend();
  /// Makes the list as long as listSize(), by random vectors near 0.
  void fill();
  bool addRandom();
  /// Adds a vector of the current rows unless it is in the list; false if it is.
  bool add(Coefficients coefficients);
  /// Recomputes all that follows from the coefficients of vector i.
  void renew(std::size_t i);
  /// Recomputes all that follows from the coefficients and the row of vector i.
  void renewKeys(std::size_t i);
  /// Replaces long vectors until there are enough short ones, or no more are found; false once
  /// mayGoOn() is.
  bool shorten(const std::function<bool()>& mayGoOn);
  /// The list holds enough short vectors.
  bool isSaturated() const;
  /// Sets the length above which vectors are replaced.
  void chooseLongest();
  /// False once mayGoOn() is.
  bool findReplacements(const std::function<bool()>& mayGoOn);
  void replaceLongest();
  void fillBucket();
  void searchBucket();
  void offerDifference(std::size_t a, std::size_t b);
  /// A number for a vector and its opposite, distinct for distinct vectors but for bad luck.
  std::uint64_t nameOf(const Coefficients& coefficients) const;
  std::size_t blocksInUse() const { return (size_ + blockSize - 1) / blockSize; }

  /// Of the numbers of the list, which are of the order of 1 whatever the unit of the basis.
  double unit_;
  SieveBasis basis_;
  std::mt19937_64 random_;
  std::vector<std::uint64_t> nameFactors_;
  std::optional<SimHasher> hasher_;
  /// Rows of the current lattice.
  std::size_t size_ = 0;
  /// (4/3) of the squared Gaussian length of the current lattice.
  float shortLength_ = 0;

  std::vector<Coefficients> coefficients_;
  std::vector<std::uint64_t> names_;
  std::vector<float> lengths_;
  std::vector<SimHash> hashes_;
  BlockRows<float> vectors_;
  std::unordered_set<std::uint64_t> known_;

  /// Indices of the vectors to be replaced, the longest ones, and what they are longer than.
  std::vector<std::uint32_t> longest_;
  float longestBound_ = 0;
  /// Vectors to put in their places: coefficients, and rows.
  std::vector<Coefficients> replacements_;
  BlockRows<float> replacementRows_;
  SieveBucket bucket_;
  std::vector<std::uint32_t> near_;
};

}  // namespace starsift

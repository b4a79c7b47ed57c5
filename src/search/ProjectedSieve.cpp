#include "search/ProjectedSieve.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "search/Candidate.h"
#include "search/RowCombination.h"
#include "search/sieve/LatticeSieve.h"
#include "search/sieve/SieveKernels.h"

namespace starsift {

namespace {

/// Directions of the sieves of the first lattice, by how many they grow with each restart, and the
/// most there are.
constexpr Index firstDirections = 70;
constexpr Index furtherDirections = 2;
constexpr Index mostDirections = 76;

/// Directions before those that a solution takes by the Gaussian heuristic, and beyond: it may be
/// found with fewer, and may be missed.
constexpr Index earlyDirections = 4;
constexpr Index spareDirections = 5;

/// Directions up to which a sieve goes on in any case: they take seconds, another basis as long.
constexpr Index quickDirections = 66;

/// Share by which rounding may lengthen a vector. Solutions of problems with variables that are 0
/// or 1 have the greatest length.
constexpr double roundingSlack = 1e-4;

/// The last `directions` rows of a basis of `count` rows.
template <class R>
SieveBasis projectedBasis(const GramSchmidtData<R>& data, Index count, Index directions) {
  const auto d = static_cast<std::size_t>(directions);
  SieveBasis basis(d, std::vector<double>(d));
  for (std::size_t i = 0; i < d; ++i) {
    const Index row = count - static_cast<Index>(i);
    for (std::size_t p = i; p < d; ++p) {
      const Index direction = count - static_cast<Index>(p);
      const auto mu = p == i ? R(1) : data.mu[row][direction];
      basis[i][p] = static_cast<double>(mu * std::sqrt(data.cLen[direction]));
    }
  }
  return basis;
}

/// What no solution's squared length exceeds, also when it is summed up from rounded coordinates;
/// none without a finite box.
template <class T, class R>
std::optional<R> greatestLength(const Lattice<T, R>& lattice) {
  const CoordinateFrame<T>& frame = lattice.frame;
  const Index first = frame.firstChecked(lattice);
  R sum = R();
  for (Index j = 1; j <= lattice.basis.m; ++j) {
    // The coordinate of the targets, which isn't checked, has the range of any other.
    const T side = j < first ? frame.rangeMultiple : std::max(T(-frame.l[j]), frame.r[j]);
    if (NumberTraits<T>::isInfinite(side)) return std::nullopt;
    const R rounded = NumberConversion<R, T>::nearest(side);
    sum += rounded * rounded;
  }
  return sum * R(1 + roundingSlack);
}

/// The projection of a solution on so many directions, of average length, is among the short
/// vectors of a sieve in floating point.
bool isShortIn(const SieveBasis& basis, Index directions, Index count, double squaredLength) {
  const double share = static_cast<double>(directions) / static_cast<double>(count);
  const double gaussian = logGaussianLength(basis, static_cast<std::size_t>(directions));
  return std::isfinite(gaussian) && share * squaredLength <= 4.0 / 3 * std::exp(2 * gaussian);
}

/// The least directions from which on that holds; more than `most` if that isn't enough. The last
/// few vectors of a basis may be long.
Index directionsFor(double squaredLength, const SieveBasis& basis, Index count, Index most) {
  Index directions = most + 1;
  while (directions > 1 && isShortIn(basis, directions - 1, count, squaredLength)) --directions;
  return directions;
}

/// Sees in floating point which vectors of the last rows of a basis are too long when lifted.
class LiftFilter {
 public:
  /// Of the last `used` of `count` rows.
  template <class R>
  LiftFilter(const GramSchmidtData<R>& data, Index count, Index used, double longest)
      : used_(static_cast<std::size_t>(used)),
        longest_(longest),
        coefficients_(1, static_cast<std::size_t>(count)),
        columns_(static_cast<std::size_t>(count - used), static_cast<std::size_t>(count)) {
    for (Index direction = count - used; direction >= 1; --direction) {
      const std::size_t column = lengths_.size();
      for (Index row = count; row > direction; --row)
        columns_.at(column, static_cast<std::size_t>(count - row)) =
            static_cast<float>(data.mu[row][direction]);
      lengths_.push_back(static_cast<double>(data.cLen[direction]));
    }
  }

  /// The vector of this squared length may be short when it is lifted.
  bool mayBeShort(const LatticeSieve::Coefficients& coefficients, double length) {
    for (std::size_t p = 0; p < used_; ++p) coefficients_.at(0, p) = coefficients[p];
    for (std::size_t p = used_; length <= longest_; ++p) {
      if (p - used_ == lengths_.size()) return true;
      const std::size_t blocks = (p + blockSize - 1) / blockSize;
      std::fill_n(&coefficients_.at(0, p), blocks * blockSize - p, 0.0F);
      const float centre = innerProduct(coefficients_[0], columns_[p - used_], blocks);
      const float nearest = std::round(centre);
      coefficients_.at(0, p) = -nearest;
      const double rest = centre - nearest;
      length += rest * rest * lengths_[p - used_];
    }
    return false;
  }

 private:
  std::size_t used_;
  double longest_;
  /// One row: of the basis vectors, the last one first.
  BlockRows<float> coefficients_;
  /// For each direction to lift to, the coordinates of the basis vectors, the last one first.
  BlockRows<float> columns_;
  /// Of the Gram-Schmidt vectors of these directions, squared.
  std::vector<double> lengths_;
};

/// Lifts vectors of the last rows of a basis.
template <class T, class R>
class Lifter {
 public:
  Lifter(const Lattice<T, R>& lattice, Index count)
      : rows_(lattice.basis.B()),
        data_(lattice.gramSchmidt),
        count_(count),
        multiples_(count),
        centres_(count) {}

  /// The vector of the lattice, of working space, that is nearest to the planes; none if it is
  /// longer than `longest`, squared, rounded.
  std::optional<Vector<T>> lift(const LatticeSieve::Coefficients& coefficients, std::size_t used,
                                const R& longest) {
    std::fill(centres_.begin(), centres_.end(), R());
    R length = R();
    for (Index i = count_; i >= 1; --i) {
      const auto k = static_cast<std::size_t>(count_ - i);
      const R factor = k < used ? R(-coefficients[k]) : R(std::round(centres_[i]));
      multiples_[i] = factor;
      if (factor != R())
        for (Index j = 1; j < i; ++j) centres_[j] -= factor * data_.mu[i][j];
      const R rest = centres_[i] - factor;
      length += rest * rest * data_.cLen[i];
      if (!(length <= longest)) return std::nullopt;
    }
    RowCombination<T> sum(rows_, Vector<T>(rows_.columnCount()), "sieve overflow");
    for (Index i = 1; i <= count_; ++i) sum.subtract(i, multiples_[i]);
    return sum.vector();
  }

 private:
  const Matrix<T>& rows_;
  const GramSchmidtData<R>& data_;
  Index count_;
  Vector<R> multiples_;
  Vector<R> centres_;
};

/// Checks every vector of the list that isn't too long.
template <class T, class R>
void checkLifted(Lattice<T, R>& lattice, const LatticeSieve& sieve, Index count, const R& longest) {
  LiftFilter filter(lattice.gramSchmidt, count, static_cast<Index>(sieve.dimension()),
                    static_cast<double>(longest));
  Lifter<T, R> lifter(lattice, count);
  for (std::size_t i = 0; i < sieve.count() && !lattice.stopped(); ++i) {
    if (!filter.mayBeShort(sieve.coefficients(i), sieve.squaredLength(i))) continue;
    if (!notifyStep(lattice)) return;
    const auto vector = lifter.lift(sieve.coefficients(i), sieve.dimension(), longest);
    if (!vector) continue;
    const Vector<T> raw = lattice.backMap(*vector);
    checkCandidate(lattice, raw);
    lattice.found.shortVectors.offer(raw);
  }
}

}  // namespace

template <class T, class R>
void sieveProjection(Lattice<T, R>& lattice) {
  lattice.classicOrthogonalise(1, 0);
  const Index count = lattice.gramSchmidt.validUpTo(lattice.basis);
  const std::optional<R> longest = greatestLength(lattice);
  if (count < 2 || !longest) return;
  const Index most =
      std::min({count, mostDirections, firstDirections + furtherDirections * lattice.run.restarts});
  const SieveBasis basis = projectedBasis(lattice.gramSchmidt, count, most);
  const Index needed = directionsFor(static_cast<double>(*longest), basis, count, most);
  if (needed > most) return;
  const Index last = std::min(std::max(needed + spareDirections, quickDirections), most);
  const std::uint64_t seed = lattice.run.seed + static_cast<std::uint64_t>(lattice.run.restarts);
  LatticeSieve sieve(projectedBasis(lattice.gramSchmidt, count, last), seed);
  while (sieve.grow([&lattice] { return notifyStep(lattice); })) {
    const auto directions = static_cast<Index>(sieve.dimension());
    if (directions >= needed - earlyDirections) checkLifted(lattice, sieve, count, *longest);
    if (directions == last) return;
  }
}

template void sieveProjection(Lattice<long double, long double>&);
template void sieveProjection(Lattice<QQ, long double>&);

}  // namespace starsift

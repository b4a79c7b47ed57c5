#include "search/enumeration/TreeGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "search/enumeration/DyadicRow.h"
#include "search/enumeration/ErrorBounds.h"

namespace starsift {

namespace {

/// The greatest number of a direction lies in this range, so that no product underflows.
constexpr double leastDirection = 0x1p-250;
constexpr double greatestDirection = 0x1p200;

/// Smaller numbers, in parts of the greatest one of a row, are left out: most are rounding errors.
constexpr double leastPart = 0x1p-100;

/// The rest counts as 0 below this part of the squared radius; any direction proves its cuts.
constexpr double negligibleRest = 0x1p-30;

/// Rounds a row; false if its greatest number is out of range.
template <class Real>
bool roundRow(const CosetDirections::Row& row, std::vector<Real>& result) {
  result.clear();
  Real greatest = 0;
  for (const BigFloat& entry : row) {
    result.push_back(rounded<Real>(entry));
    greatest = std::max(greatest, std::fabs(result.back()));
  }
  if (!(greatest < greatestDirection)) return false;
  for (Real& value : result)
    if (std::fabs(value) < greatest * static_cast<Real>(leastPart)) value = 0;
  return true;
}

template <class Real>
class Builder {
 public:
  Builder(const BoxCoset& coset, const CosetDirections& data, const std::function<bool()>& mayGoOn)
      : coset_(coset), data_(data), mayGoOn_(mayGoOn) {
    const std::size_t n = coset.point.size();
    const std::size_t d = coset.basis.size();
    geometry_.dimension = d;
    geometry_.coordinates = n;
    for (BlockRows<Real>* rows : {&geometry_.rows, &geometry_.directions, &geometry_.centres})
      *rows = BlockRows<Real>(d, n);
    for (BlockRows<Real>* row : {&geometry_.start, &geometry_.rest, &geometry_.halfRanges})
      *row = BlockRows<Real>(1, n);
  }

  std::optional<TreeGeometry<Real>> build() {
    if (!fillIntegers() || !fillDirections()) return std::nullopt;
    fillFinals();
    ErrorBounds<Real> bounds(coset_, data_, geometry_, reals_, mayGoOn_);
    if (!bounds.boundCoefficients(duals_) || !sumsAreExact() || !bounds.boundCuts())
      return std::nullopt;
    return std::move(geometry_);
  }

 private:
  /// Rows, start and half ranges.
  bool fillIntegers() {
    const std::size_t n = geometry_.coordinates;
    for (std::size_t k = 0; k < geometry_.dimension; ++k)
      for (std::size_t j = 0; j < n; ++j)
        if (!exactlyAs(coset_.basis[k][j], geometry_.rows.at(k, j))) return false;
    for (std::size_t j = 0; j < n; ++j) {
      const ZZ& p = coset_.point[j];
      const ZZ& l = coset_.lower[j];
      const ZZ& r = coset_.upper[j];
      if (!exactlyAs(p + p - l - r, geometry_.start.at(0, j)) ||
          !exactlyAs(r - l, geometry_.halfRanges.at(0, j)))
        return false;
      geometry_.start.at(0, j) /= 2;
      geometry_.halfRanges.at(0, j) /= 2;
      const auto scale = static_cast<Real>(data_.scale[j]);
      geometry_.weights.push_back(scale * scale);
    }
    return true;
  }

  /// Directions, centres, squared lengths and the rest.
  bool fillDirections() {
    const std::size_t d = geometry_.dimension;
    reals_.resize(d + 1);
    duals_.resize(d);
    for (std::size_t k = 0; k < d; ++k) {
      if (!mayGoOn_()) return false;
      if (!roundRow(data_.directions[k], reals_[k]) || !roundRow(data_.duals[k], duals_[k]))
        return false;
      const Real length = DyadicRow(reals_[k]).inner(coset_.basis[k]).template rounded<Real>();
      if (!(length > leastDirection && length < greatestDirection)) return false;
      geometry_.squaredLengths.push_back(length);
      for (std::size_t j = 0; j < geometry_.coordinates; ++j) {
        geometry_.directions.at(k, j) = reals_[k][j];
        geometry_.centres.at(k, j) = reals_[k][j] / length;
      }
    }
    return fillRest(reals_[d]);
  }

  bool fillRest(std::vector<Real>& rest) {
    if (!roundRow(data_.rest, rest)) return false;
    std::vector<ZZ> doubled(coset_.point);
    for (std::size_t j = 0; j < doubled.size(); ++j)
      doubled[j] += coset_.point[j] - coset_.lower[j] - coset_.upper[j];
    const Real length = DyadicRow(rest).inner(doubled).template rounded<Real>() / 2;
    if (length < negligibleRest * static_cast<Real>(rest.size())) {
      std::fill(rest.begin(), rest.end(), Real(0));
      return true;
    }
    geometry_.restLength = length;
    for (std::size_t j = 0; j < rest.size(); ++j) geometry_.rest.at(0, j) = rest[j];
    return std::isfinite(length);
  }

  void fillFinals() {
    geometry_.finals.resize(geometry_.dimension);
    for (std::size_t j = 0; j < geometry_.coordinates; ++j) {
      std::size_t k = 0;
      while (k < geometry_.dimension && geometry_.rows.at(k, j) == 0) ++k;
      if (k < geometry_.dimension)
        geometry_.finals[k].push_back({j, geometry_.rows.at(k, j)});
      else
        geometry_.constants.push_back(j);
    }
  }

  /// Every sum of the start and multiples of rows that a walk can reach, and each partial sum,
  /// is a multiple of 1/2 below 2^(digits - 3).
  bool sumsAreExact() const {
    constexpr int digits = std::numeric_limits<Real>::digits;
    const double limit = std::ldexp(1.0, digits - 3);
    for (std::size_t j = 0; j < geometry_.coordinates; ++j) {
      double sum = std::fabs(static_cast<double>(geometry_.start.at(0, j)));
      for (std::size_t k = 0; k < geometry_.dimension; ++k)
        sum += geometry_.magnitudes[k] * std::fabs(static_cast<double>(geometry_.rows.at(k, j)));
      if (!(sum < limit)) return false;
    }
    return true;
  }

  const BoxCoset& coset_;
  const CosetDirections& data_;
  const std::function<bool()>& mayGoOn_;
  TreeGeometry<Real> geometry_;
  /// The directions, then the rest, and the dual rows, rounded.
  std::vector<std::vector<Real>> reals_;
  std::vector<std::vector<Real>> duals_;
};

}  // namespace

template <class Real>
std::optional<TreeGeometry<Real>> treeGeometry(const BoxCoset& coset, const CosetDirections& data,
                                               const std::function<bool()>& mayGoOn) {
  return Builder<Real>(coset, data, mayGoOn).build();
}

template std::optional<TreeGeometry<double>> treeGeometry(const BoxCoset&, const CosetDirections&,
                                                          const std::function<bool()>&);
template std::optional<TreeGeometry<long double>> treeGeometry(const BoxCoset&,
                                                               const CosetDirections&,
                                                               const std::function<bool()>&);

}  // namespace starsift

#include "search/enumeration/ErrorBounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "search/enumeration/DyadicRow.h"

namespace starsift {

namespace {

/// Covers the rounding errors of a bound itself.
constexpr double excess = 1 + 0x1p-9;

/// A dual basis is accepted if no row sum of its error exceeds this.
constexpr double greatestDualError = 0.25;

/// Slacks up to this part of the squared radius are accepted; the radius of the proofs is
/// enlarged by it.
constexpr double greatestSlack = 0.01;

template <class Real>
double unitRoundoff() {
  return static_cast<double>(std::numeric_limits<Real>::epsilon()) / 2;
}

template <class Real>
double magnitude(const Real& value) {
  return std::fabs(static_cast<double>(value)) * excess;
}

}  // namespace

template <class Real>
ErrorBounds<Real>::ErrorBounds(const BoxCoset& coset, const CosetDirections& data,
                               TreeGeometry<Real>& geometry,
                               const std::vector<std::vector<Real>>& directions,
                               const std::function<bool()>& mayGoOn)
    : coset_(coset), data_(data), geometry_(geometry), directions_(directions), mayGoOn_(mayGoOn) {
  for (std::size_t j = 0; j < geometry.coordinates; ++j) {
    const double side = data.scale[j] * magnitude(geometry.halfRanges.at(0, j));
    radius_ += side * side;
  }
  constexpr double leastRadius = 0.25;
  radius_ = std::max(radius_ * excess, leastRadius);
}

template <class Real>
double ErrorBounds<Real>::spread(const std::vector<Real>& row) const {
  double sum = 0;
  for (std::size_t j = 0; j < row.size(); ++j)
    sum += magnitude(row[j]) * magnitude(geometry_.halfRanges.at(0, j));
  return sum * excess;
}

template <class Real>
bool ErrorBounds<Real>::boundCoefficients(const std::vector<std::vector<Real>>& duals) {
  const std::size_t d = geometry_.dimension;
  std::vector<ZZ> doubled(coset_.point);
  for (std::size_t j = 0; j < doubled.size(); ++j)
    doubled[j] += coset_.point[j] - coset_.lower[j] - coset_.upper[j];
  std::vector<double> middles(d);
  std::vector<double> widths(d);
  std::vector<double> errors(d);
  double greatestError = 0;
  double greatestWidth = 0;
  for (std::size_t k = 0; k < d; ++k) {
    if (!mayGoOn_()) return false;
    const DyadicRow dual(duals[k]);
    for (std::size_t i = 0; i < d; ++i) {
      Dyadic product = dual.inner(coset_.basis[i]);
      if (i == k) {
        // A dual row of integers only would have no bits below 1 to subtract.
        ZZ one(1);
        if (product.exponent > 0) return false;
        mpz_mul_2exp(one.get(), one.get(), static_cast<mp_bitcnt_t>(-product.exponent));
        product.mantissa -= one;
      }
      errors[k] += product.magnitude();
    }
    const Dyadic middle = dual.inner(doubled);
    middles[k] = -middle.template rounded<double>() / 2;
    widths[k] = (spread(duals[k]) + middle.magnitude() * 0x1p-40) * excess;
    errors[k] *= excess;
    greatestError = std::max(greatestError, errors[k]);
    greatestWidth = std::max(greatestWidth, std::fabs(middles[k]) + widths[k]);
  }
  if (!(greatestError <= greatestDualError)) return false;
  const double greatest = greatestWidth / (1 - greatestError) * excess;
  const double limit = std::ldexp(1.0, std::min(52, std::numeric_limits<Real>::digits - 3));
  for (std::size_t k = 0; k < d; ++k) {
    const double width = (widths[k] + errors[k] * greatest) * excess;
    const double bound = (std::fabs(middles[k]) + width) * excess + 1;
    if (!(bound < limit)) return false;
    geometry_.magnitudes.push_back(bound);
    geometry_.least.push_back(std::ceil(middles[k] - width));
    geometry_.most.push_back(std::floor(middles[k] + width));
  }
  return true;
}

template <class Real>
bool ErrorBounds<Real>::findLeaks() {
  const std::size_t d = geometry_.dimension;
  leaks_.assign(d, 0);
  for (std::size_t k = 0; k <= d; ++k) {
    if (!mayGoOn_()) return false;
    const DyadicRow direction(directions_[k]);
    double& leak = k < d ? leaks_[k] : restLeak_;
    for (std::size_t i = 0; i < k; ++i)
      leak += geometry_.magnitudes[i] * direction.inner(coset_.basis[i]).magnitude();
    leak *= excess;
  }
  return true;
}

template <class Real>
bool ErrorBounds<Real>::compareDirections() {
  const std::size_t n = geometry_.coordinates;
  const double rounding = (static_cast<double>(n) + 8) * unitRoundoff<Real>();
  std::vector<std::vector<Real>> scaled;
  std::vector<double> norms;
  for (std::size_t k = 0; k < directions_.size(); ++k) {
    std::vector<Real> row(directions_[k]);
    Real square = 0;
    for (std::size_t j = 0; j < n; ++j) {
      row[j] /= static_cast<Real>(data_.scale[j]);
      square += row[j] * row[j];
    }
    if (square == 0) continue;
    const Real length =
        k < geometry_.dimension ? geometry_.squaredLengths[k] : geometry_.restLength;
    mismatch_ = std::max(mismatch_, magnitude(1 - length / square) + 2 * rounding);
    norms.push_back(std::sqrt(static_cast<double>(square)));
    scaled.push_back(std::move(row));
  }
  for (std::size_t k = 0; k < scaled.size(); ++k) {
    if (!mayGoOn_()) return false;
    double sum = 0;
    for (std::size_t i = 0; i < scaled.size(); ++i) {
      if (i == k) continue;
      Real product = 0;
      for (std::size_t j = 0; j < n; ++j) product += scaled[k][j] * scaled[i][j];
      sum += magnitude(product) / (norms[k] * norms[i]) * excess + rounding * excess;
    }
    nonOrthogonality_ = std::max(nonOrthogonality_, sum * excess);
  }
  return true;
}

template <class Real>
std::vector<double> ErrorBounds<Real>::centreErrors() const {
  const std::size_t d = geometry_.dimension;
  const std::size_t n = geometry_.coordinates;
  const auto part = [this](std::size_t i, std::size_t j) {
    return geometry_.magnitudes[i] * magnitude(geometry_.rows.at(i, j));
  };
  // A point before the choice at level k is the start plus the rows above k, or a point of the box
  // minus the other rows.
  std::vector<double> chosen(n);
  std::vector<std::vector<double>> open(d, std::vector<double>(n));
  for (std::size_t j = 0; j < n; ++j) {
    chosen[j] = magnitude(geometry_.start.at(0, j));
    double sum = magnitude(geometry_.halfRanges.at(0, j));
    for (std::size_t k = 0; k < d; ++k) open[k][j] = sum += part(k, j);
  }
  const double factor = (static_cast<double>(n) + 8) * unitRoundoff<Real>() * excess;
  std::vector<double> errors(d);
  for (std::size_t k = d; k-- > 0;) {
    for (std::size_t j = 0; j < n; ++j) {
      errors[k] += magnitude(geometry_.centres.at(k, j)) * std::min(chosen[j], open[k][j]);
      chosen[j] += part(k, j);
    }
    errors[k] *= factor;
  }
  return errors;
}

template <class Real>
bool ErrorBounds<Real>::boundCuts() {
  if (!findLeaks() || !compareDirections()) return false;
  const std::size_t d = geometry_.dimension;
  const double unit = unitRoundoff<Real>();
  const double roundings = static_cast<double>(geometry_.coordinates + d) + 16;
  double greatestSum = spread(directions_[d]);
  double drift = restLeak_;
  const std::vector<double> centreErrors = this->centreErrors();
  for (std::size_t k = 0; k < d; ++k) {
    const auto length = static_cast<double>(geometry_.squaredLengths[k]);
    const double reach = std::sqrt((1 + greatestSlack) * radius_ / length) * excess;
    greatestSum += reach * spread(directions_[k]);
    const double centreError = (centreErrors[k] + 2 * unit * reach) * excess;
    drift += reach * (centreError * length + leaks_[k]) * excess;
  }
  greatestSum *= excess;
  drift *= excess;
  const double rounding = 2 * roundings * unit * radius_;
  const double hoelder =
      (drift + (roundings + static_cast<double>(d)) * unit * greatestSum + rounding) * excess;
  const double scale = (nonOrthogonality_ + mismatch_) / (1 - mismatch_);
  const double length = (scale * radius_ * excess + 3 * drift + rounding) * excess;
  const double limit = greatestSlack * radius_;
  if (!(mismatch_ < greatestSlack && hoelder <= limit && length <= limit)) return false;
  geometry_.slacks.hoelder = static_cast<Real>(hoelder);
  geometry_.slacks.length = static_cast<Real>(length);
  return true;
}

template class ErrorBounds<double>;
template class ErrorBounds<long double>;

}  // namespace starsift

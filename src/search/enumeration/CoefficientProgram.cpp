#include "search/enumeration/CoefficientProgram.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace starsift {

namespace {

/// Entries of the tableau below this magnitude are no pivots.
constexpr double leastPivot = 1e-9;
/// Coordinates this far outside of the box, in ranges, count as inside.
constexpr double feasibility = 1e-9;
/// Pivots after which the tableau is made anew.
constexpr std::size_t refactorisation = 200;

}  // namespace

template <class Real>
CoefficientProgram<Real>::CoefficientProgram(const TreeGeometry<Real>& geometry, std::size_t k,
                                             Sense sense)
    : geometry_(geometry),
      k_(k),
      sign_(sense == Sense::greatest ? 1 : -1),
      size_(k + 1),
      columns_(geometry.coordinates),
      scale_(columns_),
      lower_(columns_),
      upper_(columns_),
      point_(columns_),
      direction_(size_) {
  for (std::size_t j = 0; j < columns_; ++j)
    scale_[j] = std::sqrt(static_cast<double>(geometry.weights[j]));
  isUsable_ = factorise();
}

template <class Real>
bool CoefficientProgram<Real>::factorise() {
  const std::size_t width = columns_ + 1;
  tableau_.assign(size_ * width, 0);
  for (std::size_t i = 0; i < size_; ++i)
    for (std::size_t j = 0; j < columns_; ++j)
      tableau_[i * width + j] = static_cast<double>(geometry_.rows.at(i, j)) * scale_[j];
  tableau_[k_ * width + columns_] = sign_;
  basis_.assign(size_, columns_);
  isInBasis_.assign(columns_, false);
  pivots_ = 0;
  for (std::size_t i = 0; i < size_; ++i) {
    std::size_t best = 0;
    double greatest = 0;
    for (std::size_t j = 0; j < columns_; ++j) {
      const double size = isInBasis_[j] ? 0 : std::fabs(tableau_[i * width + j]);
      if (size > greatest) {
        greatest = size;
        best = j;
      }
    }
    if (!(greatest > leastPivot)) return false;
    pivot(i, best);
  }
  return true;
}

template <class Real>
void CoefficientProgram<Real>::pivot(std::size_t row, std::size_t column) {
  const std::size_t width = columns_ + 1;
  double* const pivotRow = &tableau_[row * width];
  const double inverse = 1 / pivotRow[column];
  for (std::size_t j = 0; j < width; ++j) pivotRow[j] *= inverse;
  pivotRow[column] = 1;
  for (std::size_t i = 0; i < size_; ++i) {
    double* const other = &tableau_[i * width];
    const double factor = other[column];
    if (i == row || factor == 0) continue;
    for (std::size_t j = 0; j < width; ++j) other[j] -= factor * pivotRow[j];
    other[column] = 0;
  }
  if (basis_[row] < columns_) isInBasis_[basis_[row]] = false;
  basis_[row] = column;
  isInBasis_[column] = true;
  ++pivots_;
}

template <class Real>
void CoefficientProgram<Real>::evaluate() {
  const std::size_t width = columns_ + 1;
  std::fill(point_.begin(), point_.end(), 0.0);
  objective_ = 0;
  for (std::size_t i = 0; i < size_; ++i) {
    const double* const row = &tableau_[i * width];
    const double deviation = row[columns_] > 0 ? upper_[basis_[i]] : lower_[basis_[i]];
    for (std::size_t j = 0; j < columns_; ++j) point_[j] += deviation * row[j];
    objective_ += deviation * row[columns_];
  }
}

template <class Real>
typename CoefficientProgram<Real>::Violation CoefficientProgram<Real>::greatestViolation() const {
  Violation result{0, 0, false};
  for (std::size_t j = 0; j < columns_; ++j) {
    if (isInBasis_[j]) continue;
    const double above = point_[j] - upper_[j];
    const double below = lower_[j] - point_[j];
    const double amount = std::max(above, below);
    if (amount > result.amount) result = {j, amount, above > below};
  }
  return result.amount > feasibility ? result : Violation{0, 0, false};
}

template <class Real>
std::size_t CoefficientProgram<Real>::leavingRow(const Violation& violation, double& step) {
  const std::size_t width = columns_ + 1;
  breaks_.clear();
  for (std::size_t i = 0; i < size_; ++i) {
    const double entry = tableau_[i * width + violation.column];
    if (std::fabs(entry) < leastPivot) continue;
    const double value = tableau_[i * width + columns_];
    const double change = violation.isAbove ? -entry : entry;
    // A value of 0 stands at the lower bound.
    if (value > 0 ? change > 0 : change < 0) continue;
    const double range = upper_[basis_[i]] - lower_[basis_[i]];
    breaks_.push_back({-value / change, std::fabs(entry) * range, i});
  }
  std::sort(breaks_.begin(), breaks_.end(),
            [](const Break& a, const Break& b) { return a.step < b.step; });
  double slope = -violation.amount;
  for (const Break& next : breaks_) {
    slope += next.slope;
    step = next.step;
    // What is left of the violation may be a rounding error.
    if (slope >= -feasibility) return next.row;
  }
  return size_;
}

template <class Real>
Real CoefficientProgram<Real>::prove(const Block<Real>* lower, const Block<Real>* upper,
                                     const Block<Real>* y) const {
  const auto at = [](const Block<Real>* row, std::size_t j) {
    return row[j / blockSize].lane[j % blockSize];
  };
  constexpr Real unit = std::numeric_limits<Real>::epsilon();
  const Real roundings = static_cast<Real>(size_ + 8) * unit;
  Real value = 0;
  Real size = 0;
  const auto add = [&](std::size_t j, Real v) {
    const Real l = at(lower, j) - at(y, j);
    const Real r = at(upper, j) - at(y, j);
    const Real most = std::max(v * l, v * r);
    value += most;
    size += std::fabs(most);
  };
  for (std::size_t i = 0; i < size_; ++i) add(basis_[i], direction_[i]);
  if (extraDirection_ != 0) add(extraColumn_, extraDirection_);
  // The products of v with the rows, which should be 0 ... 0, sign.
  Real error = roundings * size;
  for (std::size_t k = 0; k <= k_; ++k) {
    Real product = k == k_ ? -static_cast<Real>(sign_) : Real(0);
    Real terms = std::fabs(product);
    const auto addProduct = [&](std::size_t j, Real v) {
      const Real term = v * geometry_.rows.at(k, j);
      product += term;
      terms += std::fabs(term);
    };
    for (std::size_t i = 0; i < size_; ++i) addProduct(basis_[i], direction_[i]);
    if (extraDirection_ != 0) addProduct(extraColumn_, extraDirection_);
    error += static_cast<Real>(geometry_.magnitudes[k]) * (std::fabs(product) + roundings * terms);
  }
  constexpr Real excess = 1 + Real(0x1p-9);
  return value + error * excess + geometry_.slacks.program;
}

template <class Real>
Real CoefficientProgram<Real>::bound(const Block<Real>* lower, const Block<Real>* upper,
                                     const Block<Real>* y, Real known, Real needed) {
  if (pivots_ > refactorisation + size_) isUsable_ = factorise();
  if (!isUsable_) return known;
  const std::size_t width = columns_ + 1;
  for (std::size_t j = 0; j < columns_; ++j) {
    const Real at = y[j / blockSize].lane[j % blockSize];
    lower_[j] = static_cast<double>(lower[j / blockSize].lane[j % blockSize] - at) * scale_[j];
    upper_[j] = static_cast<double>(upper[j / blockSize].lane[j % blockSize] - at) * scale_[j];
  }
  extraDirection_ = 0;
  double ray = 0;
  Violation violation{0, 0, false};
  for (std::size_t rounds = 2 * columns_ + 8; rounds > 0; --rounds) {
    evaluate();
    violation = greatestViolation();
    if (violation.amount == 0) break;
    double step = 0;
    const std::size_t row = leavingRow(violation, step);
    if (row == size_) {
      // No point satisfies the bounds: far along this ray the bound falls below `needed`.
      double slope = violation.amount;
      for (const Break& next : breaks_) slope -= next.slope;
      const double excess = objective_ - static_cast<double>(needed) + 2;
      ray = slope > 0 ? step + std::max(excess, 0.0) / slope : 0;
      break;
    }
    pivot(row, violation.column);
  }
  for (std::size_t i = 0; i < size_; ++i) {
    const double change = ray * tableau_[i * width + violation.column];
    const double value = tableau_[i * width + columns_] + (violation.isAbove ? -change : change);
    direction_[i] = static_cast<Real>(value) * static_cast<Real>(scale_[basis_[i]]);
  }
  if (ray > 0) {
    extraColumn_ = violation.column;
    extraDirection_ =
        static_cast<Real>(violation.isAbove ? ray : -ray) * static_cast<Real>(scale_[extraColumn_]);
  }
  // A nan compares false and proves nothing.
  const Real proven = prove(lower, upper, y);
  return proven < known ? proven : known;
}

template class CoefficientProgram<double>;
template class CoefficientProgram<long double>;

}  // namespace starsift

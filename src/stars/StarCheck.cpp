#include "stars/StarCheck.h"

#include <algorithm>
#include <utility>

#include "numbers/Conversion.h"
#include "numbers/WideInt.h"
#include "stars/StarDefinition.h"
#include "stars/StarNorms.h"

namespace starsift {

namespace {

template <class T>
QQ exactly(const T& value) {
  return NumberConversion<QQ, T>::convert(value);
}

template <class T>
Vector<QQ> exactly(const Vector<T>& vector) {
  Vector<QQ> result;
  result.convertFrom(vector, false);
  return result;
}

/// The sign of numerator / denominator - bound; denominator > 0.
int compare(const ZZ& numerator, const ZZ& denominator, const QQ& bound) {
  if (bound.isInf()) return bound.sign() ? -1 : 1;
  std::int64_t boundNumerator = 0;
  std::uint32_t boundDenominator = 1;
  std::int64_t a = 0;
  std::int64_t b = 0;
  if (!bound.toSmall(boundNumerator, boundDenominator) || !toWord(numerator.get(), a) ||
      !toWord(denominator.get(), b))
    return compare(QQ(numerator, denominator), bound);
  const Int128 left = static_cast<Int128>(a) * boundDenominator;
  const Int128 right = static_cast<Int128>(boundNumerator) * b;
  return static_cast<int>(left > right) - static_cast<int>(left < right);
}

/// Whether the rows of a problem have `n` entries each.
template <class T>
bool hasColumns(const Vanu<T>& problem, Index n) {
  const auto fits = [n](const Matrix<T>* rows) {
    return rows->rowCount() == 0 || rows->columnCount() == n;
  };
  return fits(&problem.Ag) && fits(&problem.Au) && fits(&problem.At);
}

/// The verdicts on many stars, stored in few blocks of memory.
template <class T>
class Verdicts {
 public:
  /// Adds the verdict on star i; only solutions are stored.
  void add(Index i, const StarVerdict<T>& verdict) {
    if (!verdict.isSolution) return;
    solutions_.push_back(i);
    norms_.push_back(verdict.norms);
    targetCount_ = verdict.targetValues.dimension();
    values_.insert(values_.end(), verdict.targetValues.begin(), verdict.targetValues.end());
  }

  /// Adds star i without a verdict; it is kept unchanged.
  void addUnjudged(Index i) {
    solutions_.push_back(i);
    ++unjudged_;
  }

  /// Indices of the stars to keep, ascending.
  const std::vector<Index>& solutions() const { return solutions_; }

  /// Stores the computed values in the k-th star to keep.
  void apply(Index k, Star<T>& star) {
    k -= unjudged_;
    star.targetValues.resize(targetCount_, false);
    const auto first = values_.begin() + (k - 1) * targetCount_;
    std::move(first, first + targetCount_, star.targetValues.begin());
    const Norms<T>& norms = norms_[static_cast<std::size_t>(k - 1)];
    star.targetNorm = norms.target;
    star.slackNorm = norms.slack;
  }

 private:
  std::vector<Index> solutions_;
  /// Number of stars without a verdict; they come first.
  Index unjudged_ = 0;
  std::vector<Norms<T>> norms_;
  /// Target values of all solutions, one solution after the other.
  std::vector<T> values_;
  Index targetCount_ = 0;
};

}  // namespace

template <class T>
StarChecker<T>::Rows::Rows(const Vanu<T>& problem)
    : areWellFormed(problem.rx.dimension() == problem.lx.dimension() &&
                    hasColumns(problem, problem.lx.dimension())),
      box(problem.lx, problem.rx),
      goals(exactly(problem.dt)) {
  prepareEquations(problem);
  for (Index i = 1; i <= problem.Au.rowCount(); ++i)
    intervals.emplace_back(problem.Au[i], exactly(problem.lu[i]), exactly(problem.ru[i]));
  for (const Vector<T>& row : problem.At) targets.emplace_back(row, ZZ::one());
}

template <class T>
void StarChecker<T>::Rows::prepareEquations(const Vanu<T>& problem) {
  const QQ& tolerance = NumberTraits<QQ>::tolerance();
  for (Index i = 1; i <= problem.Ag.rowCount(); ++i) {
    const QQ value = exactly(problem.bg[i]);
    const QQ modulus = problem.qg.isSet() ? exactly(problem.qg[i]) : QQ::zero();
    if (NumberTraits<QQ>::isZero(modulus))
      intervals.emplace_back(problem.Ag[i], value - tolerance, value + tolerance);
    else
      congruences.emplace_back(problem.Ag[i], value, modulus, tolerance);
  }
}

template <class T>
StarChecker<T>::StarChecker(const Vanu<T>& problem)
    : problem_(problem),
      rows_(std::make_shared<const Rows>(problem)),
      values_(problem.At.rowCount()) {}

template <class T>
bool StarChecker<T>::check(Star<T>& star) {
  StarVerdict<T> verdict = judge(star);
  if (verdict.isSolution && hasTargets()) {
    star.targetValues.exchange(verdict.targetValues);
    star.targetNorm = verdict.norms.target;
    star.slackNorm = verdict.norms.slack;
  }
  return verdict.isSolution;
}

template <class T>
StarVerdict<T> StarChecker<T>::judge(const Star<T>& star) {
  const Vector<T>& x = star.x();
  const bool isFinite = point_.assign(x);
  if (!withinBounds(x)) return {};
  checkColumns(x.dimension());
  if (!isFinite) return judgeByDefinition(problem_, x);
  StarVerdict<T> verdict;
  judgeRows(verdict);
  return verdict;
}

template <class T>
const StarVerdict<T>& StarChecker<T>::judgePoint() {
  verdict_.isSolution = false;
  if (pointIsWithinBounds()) judgeRows(verdict_);
  return verdict_;
}

template <class T>
void StarChecker<T>::judgeRows(StarVerdict<T>& verdict) {
  verdict.isSolution = rowsAdmit();
  if (!verdict.isSolution || !hasTargets()) return;
  computeTargets();
  convertTargets(verdict);
}

template <class T>
bool StarChecker<T>::pointIsWithinBounds() const {
  if (point_.isSmall()) return rows_->box.contains(point_.small());
  using Exact = NumberConversion<QQ, T>;
  const ScaledPoint& scaled = point_.scaled();
  for (Index j = 1; j <= variableCount(); ++j) {
    const ZZ& numerator = scaled.numerators[static_cast<std::size_t>(j - 1)];
    if (compare(numerator, scaled.denominator, Exact::convert(problem_.lx[j])) < 0 ||
        compare(numerator, scaled.denominator, Exact::convert(problem_.rx[j])) > 0)
      return false;
  }
  return true;
}

template <class T>
bool StarChecker<T>::withinBounds(const Vector<T>& x) const {
  const Index n = x.dimension();
  if (point_.isSmall() && n == problem_.lx.dimension() && n == problem_.rx.dimension())
    return rows_->box.contains(point_.small());
  return x >= problem_.lx && x <= problem_.rx;
}

template <class T>
void StarChecker<T>::checkColumns(Index n) const {
  if (!hasColumns(problem_, n)) fail("Matrix: mat-vec multiplication dimension mismatch");
}

template <class T>
bool StarChecker<T>::rowsAdmit() const {
  const auto admits = [this](const auto& test) { return test.admits(point_); };
  return std::all_of(rows_->intervals.begin(), rows_->intervals.end(), admits) &&
         std::all_of(rows_->congruences.begin(), rows_->congruences.end(), admits);
}

template <class T>
void StarChecker<T>::computeTargets() {
  std::transform(rows_->targets.begin(), rows_->targets.end(), values_.begin(),
                 [this](const ScaledRow& row) { return row.product(point_); });
  norms_ = goalNorms(rows_->goals, values_);
}

template <class T>
void StarChecker<T>::convertTargets(StarVerdict<T>& verdict) const {
  using Number = NumberConversion<T, QQ>;
  try {
    verdict.targetValues.convertFrom(values_, false);
    verdict.norms = {Number::convert(norms_.target), Number::convert(norms_.slack)};
  } catch (const PrecisionException&) {
    throw PrecisionException(checkLossText);
  }
}

template <class T>
bool checkStars(StarChecker<T>& checker, Array<Star<T>>& stars, Index first) {
  // No star is changed before all are judged, because a verdict may throw.
  Verdicts<T> verdicts;
  for (Index i = 1; i < first; ++i) verdicts.addUnjudged(i);
  for (Index i = first; i <= stars.dimension(); ++i) verdicts.add(i, checker.judge(stars[i]));
  const bool noneDropped =
      verdicts.solutions().size() == static_cast<std::size_t>(stars.dimension());
  keepOnly(stars, verdicts.solutions());
  if (checker.hasTargets())
    for (Index k = first; k <= stars.dimension(); ++k) verdicts.apply(k, stars[k]);
  return noneDropped;
}

template <class T>
bool checkStars(const Vanu<T>& problem, Array<Star<T>>& stars) {
  StarChecker<T> checker(problem);
  return checkStars(checker, stars);
}

template class StarChecker<long double>;
template class StarChecker<QQ>;
template bool checkStars(StarChecker<long double>&, Array<Star<long double>>&, Index);
template bool checkStars(StarChecker<QQ>&, Array<Star<QQ>>&, Index);
template bool checkStars(const Vanu<long double>&, Array<Star<long double>>&);
template bool checkStars(const Vanu<QQ>&, Array<Star<QQ>>&);

}  // namespace starsift

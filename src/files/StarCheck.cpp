#include "files/StarCheck.h"

#include <algorithm>

#include "files/StarDefinition.h"
#include "files/StarNorms.h"
#include "numbers/Conversion.h"

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

/// row * point.
QQ product(const ScaledRow& row, const ExactPoint& point) {
  if (point.isSmall()) {
    const std::optional<std::int64_t> product = row.times(point.small());
    if (product) return QQ(ZZ(*product), row.scale());
  }
  ZZ product;
  row.times(point.scaled(), product);
  return QQ(product, row.scale() * point.scaled().denominator);
}

}  // namespace

template <class T>
StarChecker<T>::StarChecker(const Vanu<T>& problem)
    : problem_(problem), goals_(exactly(problem.dt)) {
  prepareEquations();
  for (Index i = 1; i <= problem.Au.rowCount(); ++i)
    intervals_.emplace_back(exactly(problem.Au[i]), exactly(problem.lu[i]), exactly(problem.ru[i]));
  for (const Vector<T>& row : problem.At) targets_.emplace_back(exactly(row), ZZ::one());
}

template <class T>
void StarChecker<T>::prepareEquations() {
  const QQ& tolerance = NumberTraits<QQ>::tolerance();
  for (Index i = 1; i <= problem_.Ag.rowCount(); ++i) {
    const QQ value = exactly(problem_.bg[i]);
    const QQ modulus = problem_.qg.isSet() ? exactly(problem_.qg[i]) : QQ::zero();
    if (NumberTraits<QQ>::isZero(modulus))
      intervals_.emplace_back(exactly(problem_.Ag[i]), value - tolerance, value + tolerance);
    else
      congruences_.emplace_back(exactly(problem_.Ag[i]), value, modulus, tolerance);
  }
}

template <class T>
bool StarChecker<T>::check(Star<T>& star) {
  StarVerdict<T> verdict = judge(star);
  if (verdict.isSolution) apply(verdict, star);
  return verdict.isSolution;
}

template <class T>
StarVerdict<T> StarChecker<T>::judge(const Star<T>& star) {
  const Vector<T>& x = star.x();
  if (!withinBounds(x)) return {};
  checkColumns(x.dimension());
  if (!point_.assign(x)) return judgeByDefinition(problem_, x);
  StarVerdict<T> verdict;
  verdict.isSolution = rowsAdmit();
  if (verdict.isSolution && !targets_.empty()) computeTargets(verdict);
  return verdict;
}

template <class T>
void StarChecker<T>::apply(StarVerdict<T>& verdict, Star<T>& star) const {
  if (targets_.empty()) return;
  star.targetValues.exchange(verdict.targetValues);
  star.targetNorm = verdict.norms.target;
  star.slackNorm = verdict.norms.slack;
}

template <class T>
bool StarChecker<T>::withinBounds(const Vector<T>& x) const {
  return x >= problem_.lx && x <= problem_.rx;
}

template <class T>
void StarChecker<T>::checkColumns(Index n) const {
  for (const Matrix<T>* rows : {&problem_.Ag, &problem_.Au, &problem_.At})
    if (rows->rowCount() > 0 && rows->columnCount() != n)
      fail("Matrix: mat-vec multiplication dimension mismatch");
}

template <class T>
bool StarChecker<T>::rowsAdmit() const {
  const auto admits = [this](const auto& test) { return test.admits(point_); };
  return std::all_of(intervals_.begin(), intervals_.end(), admits) &&
         std::all_of(congruences_.begin(), congruences_.end(), admits);
}

template <class T>
void StarChecker<T>::computeTargets(StarVerdict<T>& verdict) const {
  Vector<QQ> values(problem_.At.rowCount());
  std::transform(targets_.begin(), targets_.end(), values.begin(),
                 [this](const ScaledRow& row) { return product(row, point_); });
  const Norms<QQ> norms = goalNorms(goals_, values);
  using Number = NumberConversion<T, QQ>;
  try {
    verdict.targetValues.convertFrom(values, false);
    verdict.norms = {Number::convert(norms.target), Number::convert(norms.slack)};
  } catch (const PrecisionException&) {
    throw PrecisionException(checkLossText);
  }
}

template <class T>
bool checkStars(const Vanu<T>& problem, Array<Star<T>>& stars) {
  StarChecker<T> checker(problem);
  // No star is touched before all are judged: a verdict may throw.
  std::vector<StarVerdict<T>> verdicts;
  verdicts.reserve(static_cast<std::size_t>(stars.dimension()));
  for (const Star<T>& star : stars) verdicts.push_back(checker.judge(star));
  Index kept = 0;
  for (Index i = 1; i <= stars.dimension(); ++i) {
    StarVerdict<T>& verdict = verdicts[static_cast<std::size_t>(i - 1)];
    if (!verdict.isSolution) continue;
    if (++kept != i) std::swap(stars[kept], stars[i]);
    checker.apply(verdict, stars[kept]);
  }
  const bool noneDropped = kept == stars.dimension();
  stars.resize(kept, false);
  return noneDropped;
}

template class StarChecker<long double>;
template class StarChecker<QQ>;
template bool checkStars(const Vanu<long double>&, Array<Star<long double>>&);
template bool checkStars(const Vanu<QQ>&, Array<Star<QQ>>&);

}  // namespace starsift

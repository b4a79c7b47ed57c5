#include "problem/IntegerRows.h"

#include "numbers/ExactArithmetic.h"
#include "numbers/Gcd.h"
#include "numbers/VectorQQ.h"
#include "problem/Rows.h"

namespace starsift {

namespace {

/// The least common multiple of denominators, each step within the safe range of T.
template <class T>
class CommonFactor {
 public:
  explicit CommonFactor(const char* overflowText) : overflowText_(overflowText) {}

  void include(const T& value) {
    const T denominator = ExactArithmetic<T>::denominator(value);
    if (denominator == T(1)) return;
    factor_ = lcmQQ(factor_, checkedRange(denominator, overflowText_));
    checkedRange(factor_, overflowText_);
  }
  void includeFinite(const T& value) {
    if (!NumberTraits<T>::isInfinite(value)) include(value);
  }
  void include(const Vector<T>& row) {
    for (const T& entry : row) include(entry);
  }
  const T& value() const { return factor_; }

 private:
  T factor_ = T(1);
  const char* overflowText_;
};

template <class T>
void multiply(T& value, const T& factor, const char* overflowText) {
  if (value == T() || NumberTraits<T>::isInfinite(value)) return;
  value = ExactArithmetic<T>::product(value, factor);
  checkedRange(value, overflowText);
}

template <class T>
void multiply(Vector<T>& row, const T& factor, const char* overflowText) {
  for (T& entry : row) multiply(entry, factor, overflowText);
}

/// The columns of the slack or the two deviations that equation i was lifted with; empty
/// for any other equation.
template <class T>
std::vector<Index> ownColumns(const Vanu<T>& problem, Index i) {
  const Index k = i - (problem.Ag.rowCount() - problem.liftedRowCount());
  if (k <= 0) return {};
  const Index firstSlack = problem.originalCount() + 1;
  if (k <= problem.slackCount) return {firstSlack + k - 1};
  const Index deviation = firstSlack + problem.slackCount + 2 * (k - problem.slackCount - 1);
  return {deviation, deviation + 1};
}

template <class T>
T equationFactor(const Vanu<T>& problem, Index i) {
  CommonFactor<T> factor("iMF overflow2");
  factor.include(problem.bg[i]);
  factor.include(problem.Ag[i]);
  return factor.value();
}

/// Sets the units of slacks and deviations and rescales the targets accordingly.
template <class T>
void setSlackUnits(Vanu<T>& problem, const Vector<T>& factors) {
  problem.slackUnit = Vector<T>(problem.rx.dimension());
  std::fill(problem.slackUnit.begin(), problem.slackUnit.end(), T(1));
  for (Index i = problem.Ag.rowCount() - problem.liftedRowCount() + 1; i <= factors.dimension();
       ++i) {
    for (const Index column : ownColumns(problem, i)) {
      problem.slackUnit[column] = factors[i];
      for (Vector<T>& target : problem.At)
        if (!(target[column] == T()))
          target[column] = ExactArithmetic<T>::quotient(target[column], factors[i]);
    }
  }
}

template <class T>
void makeTargetsIntegers(Vanu<T>& problem) {
  CommonFactor<T> common("iMFFT overflow");
  for (Index i = 1; i <= problem.dt.dimension(); ++i) {
    common.includeFinite(problem.dt[i]);
    common.includeFinite(problem.kt[i]);
    common.include(problem.At[i]);
  }
  const T& factor = common.value();
  if (factor == T(1)) return;
  for (Vector<T>& row : problem.At) multiply(row, factor, "At iMFFT overflow");
  multiply(problem.dt, factor, "dt iMFFT overflow");
  multiply(problem.kt, factor, "kt iMFFT overflow");
  multiply(problem.ltu, factor, "ltu iMFFT overflow");
  multiply(problem.rtu, factor, "rtu iMFFT overflow");
}

template <class T>
void makeEquationIntegers(Vanu<T>& problem, Index i, const T& factor) {
  if (factor == T(1)) return;
  const std::vector<Index> own = ownColumns(problem, i);
  std::vector<T> units;
  units.reserve(own.size());
  for (const Index column : own) units.push_back(problem.Ag[i][column]);
  multiply(problem.Ag[i], factor, "Ag iMF overflow");
  for (std::size_t k = 0; k < own.size(); ++k) problem.Ag[i][own[k]] = units[k];
  multiply(problem.bg[i], factor, "bg iMF overflow");
}

template <class T>
void makeInequationIntegers(Vanu<T>& problem, Index i) {
  CommonFactor<T> common("iMF overflow3");
  common.include(problem.Au[i]);
  const T& factor = common.value();
  if (!(factor == T(1))) {
    multiply(problem.Au[i], factor, "Au iMF overflow");
    multiply(problem.lu[i], factor, "lu iMF overflow");
    multiply(problem.ru[i], factor, "ru iMF overflow");
  }
  T& lower = problem.lu[i];
  T& upper = problem.ru[i];
  if (!NumberTraits<T>::isInfinite(lower)) lower = ExactArithmetic<T>::roundedUp(lower);
  if (!NumberTraits<T>::isInfinite(upper)) upper = ExactArithmetic<T>::roundedDown(upper);
}

template <class T>
bool isZeroColumn(const Matrix<T>& matrix, Index j) {
  return std::all_of(matrix.begin(), matrix.end(),
                     [j](const Vector<T>& row) { return row[j] == T(); });
}

}  // namespace

template <class T>
void addModulusColumns(Vanu<T>& problem) {
  if (!problem.qg.isSet()) return;
  const Index rows = problem.Ag.rowCount();
  const Index before = problem.rx.dimension();
  problem.Ag.resize(rows, before + rows, false);
  problem.Au.resize(problem.Au.rowCount(), before + rows, false);
  for (Index i = 1; i <= rows; ++i) problem.Ag[i][before + i] = problem.qg[i];
}

template <class T>
void dropZeroModulusColumns(Vanu<T>& problem) {
  if (!problem.qg.isSet()) return;
  std::vector<Index> kept = indicesTo(problem.rx.dimension());
  for (Index j = problem.rx.dimension() + 1; j <= problem.Ag.columnCount(); ++j)
    if (!isZeroColumn(problem.Ag, j)) kept.push_back(j);
  selectColumns(problem.Ag, kept);
  selectColumns(problem.Au, kept);
}

template <class T>
void toIntegerRows(Vanu<T>& problem) {
  const Index rows = problem.bg.dimension();
  const Index plain = rows - problem.liftedRowCount();
  Vector<T> factors(rows);
  // The targets come first, but need the units of the deviations.
  for (Index i = plain + 1; i <= rows; ++i) factors[i] = equationFactor(problem, i);
  setSlackUnits(problem, factors);
  makeTargetsIntegers(problem);
  for (Index i = 1; i <= plain; ++i) factors[i] = equationFactor(problem, i);
  for (Index i = 1; i <= rows; ++i) makeEquationIntegers(problem, i, factors[i]);
  for (Index i = 1; i <= problem.lu.dimension(); ++i) makeInequationIntegers(problem, i);
}

#define STARSIFT_INSTANTIATE_INTEGER_ROWS(T)      \
  template void addModulusColumns(Vanu<T>&);      \
  template void dropZeroModulusColumns(Vanu<T>&); \
  template void toIntegerRows(Vanu<T>&)

STARSIFT_INSTANTIATE_INTEGER_ROWS(long double);
STARSIFT_INSTANTIATE_INTEGER_ROWS(QQ);

}  // namespace starsift

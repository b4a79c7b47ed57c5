#include "lattice/state/Basis.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "algorithms/reduction/SizeReduce.h"
#include "lattice/state/Resize.h"
#include "numbers/Conversion.h"
#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"

namespace starsift {

template <class T, class R>
void Basis<T, R>::reset(const Matrix<T>* source, const T& homValue) {
  B_save = source != nullptr ? *source : Matrix<T>();
  n = B_save.rowCount();
  m = B_save.columnCount();
  resize(n, m);
  std::fill(vectorAmounts.begin(), vectorAmounts.end(), R());
  std::fill(vectorMarks.begin(), vectorMarks.end(), Index());
  keepDependent = false;
  startFromSaved(homValue);
}

template <class T, class R>
void Basis<T, R>::startFromSaved(const T& homValue) {
  TT.resize(1, false);
  TT[1] = Matrix<T>::identity(n);
  std::fill(scale.begin(), scale.end(), T(1));
  std::fill(translation.begin(), translation.end(), T());
  homScaled = homValue;
  savedFactors.clear();
  // Into the storage that is there.
  B_ = B_save;
  forgetAll();
}

template <class T, class R>
void Basis<T, R>::dropRows() {
  for (Matrix<T>* rows : {&B_save, &B_}) *rows = Matrix<T>();
  TT = Array<Matrix<T>>();
}

template <class T, class R>
void Basis<T, R>::resize(Index newN, Index newM) {
  resizeFilled(B_, newN, newM);
  images_.forgetAll();
  checked_.forgetAll(newN);
  resizeFilled(B_save, newN, newM);
  for (Matrix<T>& transformation : TT)
    if (transformation.rowCount() < newN) resizeFilled(transformation, newN, newN);
  // Slot 0 is in use even without rows.
  resizeFilled(vecStatus, std::max(newN, Index{1}));
  vecStatus.resize(newN, false);
  resizeFilled(vectorMarks, newN);
  vectorAmounts.resize(newN, false);
  const Index known = scale.dimension();
  for (Vector<T>* vector : {&scale, &translation}) vector->resize(newM, false);
  for (Index i = known + 1; i <= newM; ++i) scale[i] = T(1);
  savedFactors.clear();
  workingFactors.clear();
  n = newN;
  m = newM;
}

template <class T, class R>
template <class U>
void Basis<T, R>::convertFrom(const Basis<U, R>& other) {
  n = other.n;
  m = other.m;
  B_save.convertFrom(other.B_save, false);
  B_.convertFrom(other.B_, false);
  forgetAll();
  TT.resize(other.TT.dimension(), false);
  for (Index i = 1; i <= TT.dimension(); ++i) TT[i].convertFrom(other.TT[i], false);
  scale.convertFrom(other.scale, false);
  translation.convertFrom(other.translation, false);
  homScaled = NumberConversion<T, U>::convert(other.homScaled);
  vecStatus = other.vecStatus;
  vectorAmounts = other.vectorAmounts;
  vectorMarks = other.vectorMarks;
  savedFactors.convertFrom(other.savedFactors);
  workingFactors.convertFrom(other.workingFactors);
  keepDependent = other.keepDependent;
  tracksMoves = other.tracksMoves;
  isTranslated = other.isTranslated;
}

template <class T, class R>
Vector<T> Basis<T, R>::toWorking(const Vector<T>& raw, const T& homValue) const {
  Vector<T> result(raw);
  result *= scale;
  if (!isTranslated || m == 0 || raw[m] == T()) return result;
  const T h = raw[m] / homValue;
  for (Index i = 1; i <= m; ++i) NumberTraits<T>::subtractProduct(result[i], h, translation[i]);
  return result;
}

template <class T, class R>
Vector<T> Basis<T, R>::toRaw(const Vector<T>& working) const {
  Vector<T> result(working);
  if (isTranslated && m > 0 && !(working[m] == T())) {
    const T h = working[m] / homScaled;
    for (Index i = 1; i <= m; ++i) NumberTraits<T>::addProduct(result[i], h, translation[i]);
  }
  // Nearly all factors are 1, and a division takes as long as many comparisons.
  for (Index i = 1; i <= m; ++i)
    if (!(scale[i] == T(1))) result[i] /= scale[i];
  return result;
}

template <class T, class R>
Matrix<T> Basis<T, R>::toWorking(const Matrix<T>& raw, const T& homValue) const {
  Matrix<T> result(raw);
  for (Vector<T>& row : result) row = toWorking(row, homValue);
  return result;
}

template <class T, class R>
Matrix<T> Basis<T, R>::toRaw(const Matrix<T>& working) const {
  Matrix<T> result(working);
  for (Vector<T>& row : result) row = toRaw(row);
  return result;
}

template <class T, class R>
void Basis<T, R>::swap(Index i, Index j, RowStatus status) {
  if (i == j) return;
  B_.swapRows(i, j);
  images_.swap(i, j);
  checked_.swap(i, j);
  if (tracksMoves) TT[TT.dimension()].swapRows(i, j);
  std::swap(vectorAmounts[i], vectorAmounts[j]);
  std::swap(vectorMarks[i], vectorMarks[j]);
  std::swap(vecStatus[i], vecStatus[j]);
  if (status == RowStatus::forget) forgetFrom(i == 0 ? j : std::min(i, j));
}

template <class T, class R>
void Basis<T, R>::subtract(Index k, const std::vector<RowMultiple<R>>& multiples) {
  images_.subtract(B_, k, multiples);
  checked_.forget(k);
  if (!tracksMoves) return;
  Matrix<T>& moves = TT[TT.dimension()];
  for (const RowMultiple<R>& one : multiples)
    subtractMultiple(moves[k], moves[one.row], NumberConversion<T, R>::ofInteger(one.factor));
}

template <class T, class R>
void Basis<T, R>::setScale(Index i, const T& value, const T& homValue) {
  if (scale[i] == value) return;
  if (i < m && !isTranslated) {
    for (Vector<T>& row : B_) {
      row[i] /= scale[i];
      row[i] *= value;
    }
    scale[i] = value;
    forgetAll();
    return;
  }
  const T newHom = i == m ? ExactArithmetic<T>::product(homValue, value) : homScaled;
  const Matrix<T> raw = untransformed();
  scale[i] = value;
  homScaled = newHom;
  replace(toWorking(raw, homValue));
}

template <class T, class R>
void Basis<T, R>::replace(Matrix<T> rows) {
  B_ = std::move(rows);
  forgetAll();
}

template <class T, class R>
void Basis<T, R>::setCentre(const Vector<T>& centre, const T& homValue) {
  const Matrix<T> raw = untransformed();
  translation = centre;
  translation *= scale;
  replace(toWorking(raw, homValue));
}

template <class T, class R>
void Basis<T, R>::clearScale(const T& homValue) {
  const Matrix<T> raw = untransformed();
  std::fill(scale.begin(), scale.end(), T(1));
  homScaled = homValue;
  replace(toWorking(raw, homValue));
}

template <class T, class R>
void Basis<T, R>::clearTranslation(const T& homValue) {
  // Applied whether or not the parameter was on until now: the translation is 0 while it is off.
  const bool applies = std::exchange(isTranslated, true);
  const Matrix<T> raw = untransformed();
  isTranslated = applies;
  std::fill(translation.begin(), translation.end(), T());
  replace(toWorking(raw, homValue));
}

template <class T, class R>
void Basis<T, R>::forgetAll() {
  images_.forgetAll();
  checked_.forgetAll(n);
  std::fill(vecStatus.begin(), vecStatus.end(), StatusWord());
  workingFactors.clear();
}

template <class T, class R>
void Basis<T, R>::forgetFrom(Index k) {
  const bool sparesDependent = k >= 2 && keepDependent;
  for (Index i = k; i <= n; ++i)
    if (!sparesDependent || vecStatus[i] != ST_DEPENDENT) vecStatus[i] = 0;
  workingFactors.clear();
}

template <class T, class R>
void Basis<T, R>::clearBits(Index from, StatusWord bits) {
  for (Index k = from; k <= vecStatus.dimension(); ++k) vecStatus[k] = without(vecStatus[k], bits);
}

template class Basis<long double, long double>;
template class Basis<QQ, long double>;
template void Basis<long double, long double>::convertFrom(const Basis<long double, long double>&);
template void Basis<long double, long double>::convertFrom(const Basis<QQ, long double>&);
template void Basis<QQ, long double>::convertFrom(const Basis<QQ, long double>&);
template void Basis<QQ, long double>::convertFrom(const Basis<long double, long double>&);

}  // namespace starsift

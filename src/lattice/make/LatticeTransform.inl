// Lattice: the unimodular matrices that transform B_save into the working basis, and the test
// that both span the same lattice.
#pragma once

#include <algorithm>
#include <ostream>
#include <utility>

#include "algorithms/exact/CoordinateSolver.h"
#include "algorithms/exact/ExactProduct.h"
#include "algorithms/exact/Unimodular.h"
#include "lattice/Lattice.h"
#include "lattice/make/PreparationPace.h"
#include "numbers/ExactArithmetic.h"
#include "system/Console.h"

namespace starsift {

namespace latticetransform {

/// The number of matrices above which a remark is printed.
constexpr Index maxTransformations = 20;

template <class T>
bool isIdentity(const Matrix<T>& matrix) {
  for (Index i = 1; i <= matrix.rowCount(); ++i)
    for (Index j = 1; j <= matrix.columnCount(); ++j)
      if (!(matrix[i][j] == T(i == j ? 1 : 0))) return false;
  return matrix.rowCount() == matrix.columnCount();
}

/// Sets entries within the tolerance of 0 to 0.
template <class T>
void dropRounding(Vector<T>& row) {
  if constexpr (NumberTraits<T>::exact) return;
  for (T& entry : row)
    if (NumberTraits<T>::isZero(entry)) entry = T();
}

template <class T>
void dropRounding(Matrix<T>& matrix) {
  for (Vector<T>& row : matrix) dropRounding(row);
}

template <class T>
void checkRange(const Matrix<T>& matrix, const char* text) {
  for (const Vector<T>& row : matrix)
    for (const T& entry : row) checkedRange(entry, text);
}

/// The last matrix of TT.
template <class T, class R>
Matrix<T>& current(Basis<T, R>& basis) {
  return basis.TT[basis.TT.dimension()];
}

template <class T, class R>
void resetCurrent(Basis<T, R>& basis) {
  // Not both matrices at once.
  current(basis) = Matrix<T>();
  current(basis) = Matrix<T>::identity(basis.n);
}

/// The rows of the untransformed B are those of B_save.
template <class T, class R>
bool isSaved(const Basis<T, R>& basis) {
  for (Index i = 1; i <= basis.n; ++i)
    if (!identical(basis.toRaw(basis.B()[i]), basis.B_save[i])) return false;
  return true;
}

/// The last matrix of TT := the coordinates of the rows over B_save; false if they have none.
template <class T, class R>
bool findTransformation(Basis<T, R>& basis) {
  if (isSaved(basis)) {
    resetCurrent(basis);
    return true;
  }
  try {
    Matrix<T> found(basis.n, basis.n);
    for (Index i = 1; i <= basis.n; ++i)
      if (!coordinatesOver(basis.savedFactors, basis.B_save, basis.toRaw(basis.B()[i]), true,
                           found[i]))
        return false;
    current(basis) = std::move(found);
    return true;
  } catch (const PrecisionException&) {
    // The exact lattice has no fallback.
    if (!NumberTraits<T>::exact) throw;
    return false;
  }
}

/// Tests the last matrix of TT. In exact numbers a failure is only reported, "unimodularity check
/// skipped", and the result is true.
template <class T, class R>
bool passesUnimodularTest(Basis<T, R>& basis, bool isTracked) {
  if (isUnimodular(current(basis))) return true;
  if (NumberTraits<T>::exact) {
    remarkStream() << "*** unimodularity check skipped" << endLine();
    stampOutputTime();
    return true;
  }
  if (isTracked) throw PrecisionException("unimodular error");
  return false;
}

/// A row of the basis by the tracked transformation, from its row of coefficients over B_save.
template <class T>
Vector<T> trackedRow(const RightFactor<T>& saved, const Vector<T>& coefficients) {
  try {
    Vector<T> row = saved.times(coefficients);
    dropRounding(row);
    std::for_each(row.begin(), row.end(), &NumberTraits<T>::overflowCheck);
    return row;
  } catch (const FatalPrecisionException&) {
    throw PrecisionException("transformation overflow");
  }
}

/// The rows of the untransformed B are those by the tracked transformation.
template <class T, class R>
bool agreesWithTracked(Basis<T, R>& basis) {
  const RightFactor<T> saved(basis.B_save);
  for (Index i = 1; i <= basis.n; ++i)
    if (!identical(trackedRow(saved, current(basis)[i]), basis.toRaw(basis.B()[i]))) return false;
  return true;
}

/// B_save := the untransformed B.
template <class T, class R>
void saveRows(Basis<T, R>& basis) {
  bool isChanged = false;
  for (Index i = 1; i <= basis.n; ++i) {
    Vector<T> row = basis.toRaw(basis.B()[i]);
    dropRounding(row);
    isChanged = isChanged || !identical(row, basis.B_save[i]);
    basis.B_save[i] = std::move(row);
  }
  if (isChanged) basis.savedFactors = basis.workingFactors;
}

/// B_save and B := the basis by the tracked transformation.
template <class T, class R>
void restoreTracked(Basis<T, R>& basis, const T& homValue) {
  const RightFactor<T> saved(basis.B_save);
  Matrix<T> tracked(basis.n, basis.B_save.columnCount());
  for (Index i = 1; i <= basis.n; ++i) tracked[i] = trackedRow(saved, current(basis)[i]);
  if (!identical(tracked, basis.B_save)) basis.savedFactors = CoordinateFactors<T>();
  basis.B_save = std::move(tracked);
  basis.replace(basis.toWorking(basis.B_save, homValue));
}

/// Rebuilds B from B_save and turns tracking on.
template <class T, class R>
void restartTracking(Lattice<T, R>& lattice) {
  Basis<T, R>& basis = lattice.basis;
  CoordinateFactors<T> factors = basis.savedFactors;
  basis.replace(lattice.forwardMapAll(basis.B_save));
  basis.workingFactors = std::move(factors);
  resetCurrent(basis);
  lattice.run.consistencyForced = true;
  lattice.setTracking(true);
}

}  // namespace latticetransform

template <class T, class R>
bool Lattice<T, R>::verifyTransformation(LatticeKind stage, Announce announce) {
  if (stage == LatticeKind::full && basis.TT.dimension() != 1)
    fail("In the non-aardal case TT.MN should always be == 1");
  latticetransform::checkRange(basis.B(), "base matrix overflow");
  const bool isFound = params.consistency || latticetransform::findTransformation(basis);
  if (isFound) latticetransform::dropRounding(latticetransform::current(basis));
  if (!isFound || !latticetransform::passesUnimodularTest(basis, params.consistency)) {
    latticetransform::restartTracking(*this);
    return false;
  }
  if (run.consistencyForced) {
    run.consistencyForced = false;
    setTracking(false);
  }
  // A row at a time, as a copy of the basis takes 100 MB at some thousand columns.
  const bool agrees = latticetransform::agreesWithTracked(basis);
  if (agrees)
    latticetransform::saveRows(basis);
  else
    latticetransform::restoreTracked(basis, this->homValue);
  pushTransformation(stage == LatticeKind::equations ? Stack::push : Stack::restart);
  if (announce == Announce::full) writeLatFile();
  return agrees;
}

template <class T, class R>
void Lattice<T, R>::applyTransformations(Matrix<T>& rows) const {
  PreparationPace pace(run);
  for (const Matrix<T>& transformation : basis.TT) {
    const RightFactor<T> factor(rows);
    Matrix<T> product(transformation.rowCount(), rows.columnCount());
    for (Index i = 1; i <= product.rowCount(); ++i) {
      product[i] = factor.times(transformation[i]);
      pace.passed(factor.entryCount());
    }
    rows = std::move(product);
    latticetransform::checkRange(rows, "Overflow when applying transformation");
  }
}

template <class T, class R>
void Lattice<T, R>::pushTransformation(Stack stack) {
  Array<Matrix<T>>& TT = basis.TT;
  if (stack == Stack::restart) {
    TT.resize(1, false);
  } else if (!latticetransform::isIdentity(TT[TT.dimension()])) {
    if (TT.dimension() >= latticetransform::maxTransformations) {
      remarkStream() << "*** TT.MN > T_MAT_NBR" << endLine();
      stampOutputTime();
    }
    TT.resize(TT.dimension() + 1, false);
  }
  latticetransform::resetCurrent(basis);
}

}  // namespace starsift

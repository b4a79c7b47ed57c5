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
void dropRounding(Matrix<T>& matrix) {
  if constexpr (NumberTraits<T>::exact) return;
  for (Vector<T>& row : matrix)
    for (T& entry : row)
      if (NumberTraits<T>::isZero(entry)) entry = T();
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

/// The last matrix of TT := the coordinates of the rows over B_save; false if they have none.
template <class T, class R>
bool findTransformation(Basis<T, R>& basis, const Matrix<T>& untransformed) {
  if (identical(untransformed, basis.B_save)) {
    current(basis) = Matrix<T>::identity(basis.n);
    return true;
  }
  try {
    auto found = coordinatesOverAll(basis.savedFactors, basis.B_save, untransformed, true);
    if (found) current(basis) = std::move(*found);
    return found.has_value();
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

/// B_save := the basis by the tracked transformation; true if the untransformed B equals it,
/// otherwise B is replaced by it.
template <class T, class R>
bool storeTracked(Basis<T, R>& basis, const Matrix<T>& untransformed, const T& homValue) {
  try {
    Matrix<T> tracked = exactProduct(current(basis), basis.B_save);
    dropRounding(tracked);
    for (const Vector<T>& row : tracked)
      std::for_each(row.begin(), row.end(), &NumberTraits<T>::overflowCheck);
    const bool agrees = identical(tracked, untransformed);
    if (!identical(tracked, basis.B_save))
      basis.savedFactors = agrees ? basis.workingFactors : CoordinateFactors<T>();
    basis.B_save = std::move(tracked);
    if (!agrees) basis.replace(basis.toWorking(basis.B_save, homValue));
    return agrees;
  } catch (const FatalPrecisionException&) {
    throw PrecisionException("transformation overflow");
  }
}

/// Rebuilds B from B_save and turns tracking on.
template <class T, class R>
void restartTracking(Lattice<T, R>& lattice) {
  Basis<T, R>& basis = lattice.basis;
  CoordinateFactors<T> factors = basis.savedFactors;
  basis.replace(lattice.forwardMapAll(basis.B_save));
  basis.workingFactors = std::move(factors);
  current(basis) = Matrix<T>::identity(basis.n);
  lattice.run.consistencyForced = true;
  lattice.setTracking(true);
}

}  // namespace latticetransform

template <class T, class R>
bool Lattice<T, R>::verifyTransformation(LatticeKind stage, Announce announce) {
  if (stage == LatticeKind::full && basis.TT.dimension() != 1)
    fail("In the non-aardal case TT.MN should always be == 1");
  latticetransform::checkRange(basis.B(), "base matrix overflow");
  const Matrix<T> untransformed = basis.untransformed();
  const bool isFound =
      params.consistency || latticetransform::findTransformation(basis, untransformed);
  if (isFound) latticetransform::dropRounding(latticetransform::current(basis));
  if (!isFound || !latticetransform::passesUnimodularTest(basis, params.consistency)) {
    latticetransform::restartTracking(*this);
    return false;
  }
  if (run.consistencyForced) {
    run.consistencyForced = false;
    setTracking(false);
  }
  const bool agrees = latticetransform::storeTracked(basis, untransformed, this->homValue);
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
  TT[TT.dimension()] = Matrix<T>::identity(basis.n);
}

}  // namespace starsift

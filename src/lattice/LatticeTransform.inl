// Lattice: what has become of the generated basis: the matrices that lead from B_save to
// the working basis, and the test that both span the same lattice.
#pragma once

#include <algorithm>
#include <iostream>
#include <utility>

#include "algorithms/exact/CoordinateSolver.h"
#include "algorithms/exact/ExactProduct.h"
#include "algorithms/exact/Unimodular.h"
#include "lattice/ClearAtEnd.h"
#include "lattice/Lattice.h"
#include "numbers/ExactArithmetic.h"
#include "system/Console.h"

namespace starsift {

namespace latticetransform {

/// Matrices that the stack is expected to hold.
constexpr Index mostTransformations = 20;

template <class T>
bool isIdentity(const Matrix<T>& matrix) {
  for (Index i = 1; i <= matrix.rowCount(); ++i)
    for (Index j = 1; j <= matrix.columnCount(); ++j)
      if (!(matrix[i][j] == T(i == j ? 1 : 0))) return false;
  return matrix.rowCount() == matrix.columnCount();
}

/// What is no more than rounding becomes 0.
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

}  // namespace latticetransform

template <class T, class R>
bool Lattice<T, R>::verifyTransformation(bool aardal, bool silent) {
  if (!aardal && TT.dimension() != 1) fail("In the non-aardal case TT.MN should always be == 1");
  latticetransform::checkRange(B, "base matrix overflow");
  Matrix<T> untransformed = backMapAll(B);
  if (!params.consistency && !findTransformation(untransformed)) return restartTracking();
  latticetransform::dropRounding(TT[TT.dimension()]);
  if (!passesUnimodularTest()) return restartTracking();
  if (consistencyForced) {
    consistencyForced = false;
    setTracking(false);
  }
  const bool agrees = takeTracked(std::move(untransformed));
  pushTransformation(aardal);
  if (!silent) writeLatFile();
  return agrees;
}

template <class T, class R>
bool Lattice<T, R>::findTransformation(const Matrix<T>& untransformed) {
  if (identical(untransformed, B_save)) {
    TT[TT.dimension()] = Matrix<T>::identity(n);
    return true;
  }
  try {
    auto found = coordinatesOverAll(savedFactors, B_save, untransformed, true);
    if (found) TT[TT.dimension()] = std::move(*found);
    return found.has_value();
  } catch (const PrecisionException&) {
    // In exact numbers there is no better try.
    if (!NumberTraits<T>::exact) throw;
    return false;
  }
}

template <class T, class R>
bool Lattice<T, R>::passesUnimodularTest() {
  if (isUnimodular(TT[TT.dimension()])) return true;
  if (NumberTraits<T>::exact) {
    std::cerr << "*** unimodularity check skipped" << endLine();
    stampOutputTime();
    return true;
  }
  if (params.consistency) throw PrecisionException("unimodular error");
  return false;
}

template <class T, class R>
bool Lattice<T, R>::takeTracked(Matrix<T> untransformed) {
  try {
    Matrix<T> tracked = exactProduct(TT[TT.dimension()], B_save);
    latticetransform::dropRounding(tracked);
    for (const Vector<T>& row : tracked)
      std::for_each(row.begin(), row.end(), &NumberTraits<T>::overflowCheck);
    const bool agrees = identical(tracked, untransformed);
    if (!identical(tracked, B_save))
      savedFactors = agrees ? workingFactors : CoordinateFactors<T>();
    B_save = std::move(tracked);
    if (!agrees) replaceBasis(forwardMapAll(B_save));
    return agrees;
  } catch (const FatalPrecisionException&) {
    throw PrecisionException("transformation overflow");
  }
}

template <class T, class R>
bool Lattice<T, R>::restartTracking() {
  CoordinateFactors<T> factors = savedFactors;
  replaceBasis(forwardMapAll(B_save));
  workingFactors = std::move(factors);
  TT[TT.dimension()] = Matrix<T>::identity(n);
  consistencyForced = true;
  setTracking(true);
  return false;
}

template <class T, class R>
void Lattice<T, R>::setTracking(bool on) {
  this->reactionsOff = true;
  const ClearAtEnd clearing(this->reactionsOff);
  params.consistency = on;
}

template <class T, class R>
void Lattice<T, R>::applyTransformations(Matrix<T>& rows) const {
  for (const Matrix<T>& transformation : TT) {
    rows = exactProduct(transformation, rows);
    latticetransform::checkRange(rows, "Overflow when applying transformation");
  }
}

template <class T, class R>
void Lattice<T, R>::pushTransformation(bool checkIdentity) {
  if (!checkIdentity) {
    TT.resize(1, false);
  } else if (!latticetransform::isIdentity(TT[TT.dimension()])) {
    if (TT.dimension() >= latticetransform::mostTransformations) {
      std::cerr << "*** TT.MN > T_MAT_NBR" << endLine();
      stampOutputTime();
    }
    TT.resize(TT.dimension() + 1, false);
  }
  TT[TT.dimension()] = Matrix<T>::identity(n);
}

template <class T, class R>
void Lattice<T, R>::setScale(Index i, const T& value) {
  if (scale[i] == value) return;
  if (i < m && !params.translate) {
    for (Vector<T>& row : B) {
      row[i] /= scale[i];
      row[i] *= value;
    }
    scale[i] = value;
    forgetBasis();
    return;
  }
  const T newHom = i == m ? ExactArithmetic<T>::product(this->homValue, value) : homScaled;
  const Matrix<T> raw = backMapAll(B);
  scale[i] = value;
  homScaled = newHom;
  replaceBasis(forwardMapAll(raw));
}

}  // namespace starsift

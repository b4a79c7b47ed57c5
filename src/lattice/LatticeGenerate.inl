// Lattice: from the normal form of the problem to a basis. Row 1 stands for the constants,
// each further row for a variable; coordinates are scaled so that the points of the problem
// lie in a box around 0. Equations go first: through a lattice of their own.
#pragma once

#include <algorithm>
#include <iostream>
#include <string>
#include <utility>

#include "algorithms/exact/CommonMultiple.h"
#include "algorithms/reduction/SizeReduce.h"
#include "lattice/Lattice.h"
#include "lattice/StarsAside.h"
#include "numbers/ExactArithmetic.h"
#include "numbers/Gcd.h"
#include "problem/Rows.h"
#include "system/Console.h"

namespace starsift {

namespace latticegenerate {

/// Makes `multiple` one of the range too.
template <class T>
void takeIn(T& multiple, const T& range) {
  multiple = lcmQQ(multiple, range);
  checkedRange(multiple, "R overflow");
}

/// The entries of one coordinate: -middle, then factor * row.
template <class T>
void setColumn(Matrix<T>& basis, Index column, const T& middle, const Vector<T>& row,
               const T& factor) {
  basis[1][column] = negated(middle);
  for (Index v = 1; v <= row.dimension(); ++v)
    basis[1 + v][column] = ExactArithmetic<T>::product(factor, row[v]);
}

/// 3 times the larger squared length of the two check vectors.
template <class R, class T>
R boxLimit(const Vector<T>& l, const Vector<T>& r) {
  return R(3) * std::max(squaredNorm<R>(l), squaredNorm<R>(r));
}

}  // namespace latticegenerate

template <class T, class R>
bool Lattice<T, R>::prepareLattice() {
  reportCounts();
  if (latticeKind != LatticeKind::none) {
    // What is stored are vectors of another basis: only their points last.
    if (latticeKind == LatticeKind::full) sol2star();
    reset(nullptr, false);
  }
  const StarsAside<T> aside(file.stars);
  Array<Matrix<T>> transformations;
  const Index equations = this->Ag.rowCount();
  if (equations > 0) {
    generateLattice(true);
    transformations = aardalReduce();
    removeColumns(ColumnsOf::equations, equations, 1);
    const bool isKnownSolvable =
        aside.areThere() || solutions.dimension() > 0 || bestVector.isSet();
    if (!isKnownSolvable && !extractInhomogeneous().isSet())
      fail("The equation system has no integer solution :(");
  }
  VectorBackup<T, R> backup = backupVectors(BackupMode::coordinates);
  generateLattice(false);
  if (transformations.dimension() > 0)
    removeEquations(std::move(transformations), equations);
  else
    modsInLattice = false;
  pushTransformation(false);
  restoreVectors(std::move(backup), BackupMode::coordinates);
  return true;
}

template <class T, class R>
void Lattice<T, R>::reportCounts() const {
  if (params.verb != 2) return;
  const auto count = [](Index value) { return std::to_string(value); };
  report(std::cout, "Optimization program: Targets = " + count(this->At.rowCount()) +
                        ", Equations = " + count(this->Ag.rowCount()) +
                        ", Inequations = " + count(this->Au.rowCount()) +
                        ", Variables = " + count(this->rx.dimension()));
}

template <class T, class R>
void Lattice<T, R>::removeEquations(Array<Matrix<T>> transformations, Index equations) {
  TT = std::move(transformations);
  Matrix<T> rows(B);
  applyTransformations(rows);
  replaceBasis(std::move(rows));
  resize(n - equations, 0, false);
  removeColumns(ColumnsOf::moduli, modsInLattice ? this->modulusCount() : 0,
                targetColumns() + this->Au.rowCount() + this->rx.dimension() + 1);
  modsInLattice = false;
  B_save = backMapAll(B);
  savedFactors.clear();
}

template <class T, class R>
Index Lattice<T, R>::targetColumns() const {
  return this->atuValid ? 1 : 0;
}

template <class T, class R>
void Lattice<T, R>::generateLattice(bool aardal) {
  equationsRemoved = !aardal;
  rangeMultiple = computeR(aardal);
  const Index rows = aardal ? this->Ag.rowCount() : this->Au.rowCount() + targetColumns();
  const Index columns = this->rx.dimension() + this->modulusCount();
  modsInLattice = this->modulusCount() > 0;
  resize(columns + 1, rows + columns + 1, true);
  // Vectors of another lattice, of other lengths.
  collected.clear();
  chosen.clear();
  std::fill(scale.begin(), scale.end(), T(1));
  std::fill(translation.begin(), translation.end(), T());
  homScaled = this->homValue;
  B_save = Matrix<T>(n, m);
  if (aardal) {
    for (Index i = 1; i <= rows; ++i) setEquationColumn(i);
  } else {
    if (this->atuValid) setTargetColumn();
    for (Index i = 1; i <= this->Au.rowCount(); ++i) setInequationColumn(i);
  }
  for (Index i = 1; i <= columns; ++i) setVariableColumn(rows + i, i);
  l[m] = this->homValue;
  r[m] = this->homValue;
  B_save[1][m] = this->homValue;
  c[m] = T();
  for (const Vector<T>& row : B_save)
    for (const T& entry : row) checkedRange(entry, "B_save overflow2");
  takeGenerated(aardal ? LatticeKind::equations : LatticeKind::full);
}

template <class T, class R>
void Lattice<T, R>::setEquationColumn(Index i) {
  c[i] = T();
  l[i] = T();
  r[i] = T();
  latticegenerate::setColumn(B_save, i, this->bg[i], this->Ag[i], T(1));
}

template <class T, class R>
void Lattice<T, R>::setTargetColumn() {
  const T width = this->rtu - this->ltu;
  c[1] = NumberTraits<T>::isZero(width) ? rangeMultiple
                                        : ExactArithmetic<T>::quotient(rangeMultiple, width);
  l[1] = T();
  r[1] = T();
  const T middle = ExactArithmetic<T>::product(this->rtu + this->ltu, c[1]);
  latticegenerate::setColumn(B_save, 1, middle, this->atu, ExactArithmetic<T>::product(T(2), c[1]));
}

template <class T, class R>
void Lattice<T, R>::setInequationColumn(Index i) {
  const Index column = targetColumns() + i;
  const T width = this->ru[i] - this->lu[i];
  if (NumberTraits<T>::isZero(width)) fail("ineq bounds error2");
  l[column] = negated(rangeMultiple);
  r[column] = rangeMultiple;
  c[column] = ExactArithmetic<T>::quotient(rangeMultiple, width);
  const T middle = ExactArithmetic<T>::product(this->lu[i] + this->ru[i], c[column]);
  latticegenerate::setColumn(B_save, column, middle, this->Au[i],
                             ExactArithmetic<T>::product(T(2), c[column]));
}

template <class T, class R>
void Lattice<T, R>::setVariableColumn(Index column, Index i) {
  const Index variables = this->rx.dimension();
  const bool isModulus = i > this->fd.dimension();
  const FreedomDegree kind = isModulus ? FreedomDegree::free : this->fd[i];
  l[column] = kind == FreedomDegree::free ? -NumberTraits<T>::infinity() : negated(rangeMultiple);
  r[column] = NumberTraits<T>::infinity();
  if (i > variables - this->deviationCount) {
    c[column] = rangeMultiple;
  } else if (kind == FreedomDegree::free || kind == FreedomDegree::rightFree) {
    c[column] = T(1);
  } else {
    // The lower bound is 0 here.
    if (NumberTraits<T>::isZero(this->rx[i] - this->lx[i])) fail("sol bounds error");
    r[column] = rangeMultiple;
    c[column] = ExactArithmetic<T>::quotient(rangeMultiple, this->rx[i]);
  }
  B_save[1][column] = negated(rangeMultiple);
  B_save[1 + i][column] = ExactArithmetic<T>::product(T(2), c[column]);
}

template <class T, class R>
void Lattice<T, R>::takeGenerated(LatticeKind kind) {
  lSave = l;
  rSave = r;
  lEqualsR = l == r;
  latticeKind = kind;
  supLimit = latticegenerate::boxLimit<R>(l, r);
  pushTransformation(false);
  replaceBasis(Matrix<T>(B_save));
  clearFactors();
}

template <class T, class R>
T Lattice<T, R>::computeR(bool aardal) {
  rangeMultiple = T(1);
  extendBounds(true);
  if (!aardal) {
    for (Index i = 1; i <= this->Au.rowCount(); ++i) {
      const T width = this->ru[i] - this->lu[i];
      if (NumberTraits<T>::isZero(width)) fail("ineq bounds error1");
      latticegenerate::takeIn(rangeMultiple, width);
    }
    if (this->atuValid) {
      this->ltu = lcmAdjust(rangeMultiple, this->rtu, this->ltu);
      const T width = this->rtu - this->ltu;
      if (!NumberTraits<T>::isZero(width)) latticegenerate::takeIn(rangeMultiple, width);
    }
  }
  return rangeMultiple;
}

template <class T, class R>
void Lattice<T, R>::extendBounds(bool useLcm) {
  for (Index i = 1; i <= this->rx.dimension(); ++i) {
    T& upper = this->rx[i];
    if (NumberTraits<T>::isInfinite(this->lx[i]) || NumberTraits<T>::isInfinite(upper)) continue;
    if (this->fd[i] == FreedomDegree::rightFree || this->fd[i] == FreedomDegree::free)
      upper -= lcmAdjust(rangeMultiple, upper, T());
    if (useLcm && !NumberTraits<T>::isZero(upper)) latticegenerate::takeIn(rangeMultiple, upper);
  }
}

template <class T, class R>
void Lattice<T, R>::removeColumns(ColumnsOf columns, Index count, Index position) {
  if (count == 0) return;
  const bool ofEquations = columns == ColumnsOf::equations;
  if (ofEquations) {
    n -= count;
    pushTransformation(false);
    B_save = backMapAll(B);
  }
  VectorBackup<T, R> backup = backupVectors(BackupMode::columns, count, position);
  for (Vector<T>* vector : {&l, &r, &lSave, &rSave, &c, &scale, &translation})
    removeElements(*vector, position, count);
  supLimit = latticegenerate::boxLimit<R>(l, r);
  Matrix<T> rows = withoutColumns(B, n, position, count);
  Matrix<T> saved = withoutColumns(B_save, n, position, count);
  resize(n, m - count, false);
  replaceBasis(std::move(rows));
  B_save = std::move(saved);
  if (ofEquations)
    equationsRemoved = true;
  else
    modsInLattice = false;
  restoreVectors(std::move(backup), BackupMode::vectors);
}

}  // namespace starsift

// Lattice: from the normal form of the problem to a basis. Row 1 stands for the constants,
// each further row for a variable; coordinates are scaled so that the points of the problem
// lie in a box around 0. Equations are eliminated first, by a lattice of their own.
#pragma once

#include <algorithm>
#include <cassert>
#include <ostream>
#include <string>
#include <utility>

#include "algorithms/exact/CommonMultiple.h"
#include "lattice/Lattice.h"
#include "lattice/make/PreparationPace.h"
#include "lattice/make/StarsAside.h"
#include "numbers/ExactArithmetic.h"
#include "numbers/Gcd.h"
#include "problem/Rows.h"
#include "system/Console.h"

namespace starsift {

namespace latticegenerate {

/// multiple := lcm(multiple, range).
template <class T>
void makeMultipleOf(T& multiple, const T& range) {
  multiple = lcmQQ(multiple, range);
  checkedRange(multiple, "R overflow");
}

/// The entries of one coordinate, which are 0: -middle, then factor * row.
template <class T>
void setColumn(Matrix<T>& basis, Index column, const T& middle, const Vector<T>& row,
               const T& factor) {
  basis[1][column] = negated(middle);
  for (Index v = 1; v <= row.dimension(); ++v)
    if (!(row[v] == T())) basis[1 + v][column] = ExactArithmetic<T>::product(factor, row[v]);
}

/// Sets check vectors, scale factors and basis entries of a lattice, coordinate by coordinate.
template <class T, class R>
class Columns {
 public:
  /// `problem` is in normal form; the frame, which holds the half width of the box, and B_save
  /// have their final size.
  Columns(const Vanu<T>& problem, CoordinateFrame<T>& frame, Basis<T, R>& basis)
      : problem_(problem), frame_(frame), basis_(basis), R_(frame.rangeMultiple) {}

  void setEquation(Index i, Index column) {
    setBounds(column, T(), T(), T());
    setColumn(basis_.B_save, column, problem_.bg[i], problem_.Ag[i], T(1));
  }

  void setTarget(Index column) {
    const T width = problem_.rtu - problem_.ltu;
    const T c = NumberTraits<T>::isZero(width) ? R_ : Exact::quotient(R_, width);
    setBounds(column, T(), T(), c);
    const T middle = Exact::product(problem_.rtu + problem_.ltu, c);
    setColumn(basis_.B_save, column, middle, problem_.atu, Exact::product(T(2), c));
  }

  void setInequation(Index i, Index column) {
    const T width = problem_.ru[i] - problem_.lu[i];
    if (NumberTraits<T>::isZero(width)) fail("ineq bounds error2");
    const T c = Exact::quotient(R_, width);
    setBounds(column, negated(R_), R_, c);
    const T middle = Exact::product(problem_.lu[i] + problem_.ru[i], c);
    setColumn(basis_.B_save, column, middle, problem_.Au[i], Exact::product(T(2), c));
  }

  /// Variable i; an i above the number of variables is a modulus.
  void setVariable(Index i, Index column) {
    const T infinity = NumberTraits<T>::infinity();
    const Index variables = problem_.rx.dimension();
    const bool isModulus = i > problem_.fd.dimension();
    const FreedomDegree kind = isModulus ? FreedomDegree::free : problem_.fd[i];
    const T lower = kind == FreedomDegree::free ? -infinity : negated(R_);
    if (i > variables - problem_.deviationCount) {
      setBounds(column, lower, infinity, R_);
    } else if (kind == FreedomDegree::free || kind == FreedomDegree::rightFree) {
      setBounds(column, lower, infinity, T(1));
    } else {
      // The lower bound is 0 here.
      if (NumberTraits<T>::isZero(problem_.rx[i] - problem_.lx[i])) fail("sol bounds error");
      setBounds(column, lower, R_, Exact::quotient(R_, problem_.rx[i]));
    }
    basis_.B_save[1][column] = negated(R_);
    basis_.B_save[1 + i][column] = Exact::product(T(2), frame_.c[column]);
  }

  /// The last coordinate, that of h.
  void setLast() {
    setBounds(basis_.m, problem_.homValue, problem_.homValue, T());
    basis_.B_save[1][basis_.m] = problem_.homValue;
  }

 private:
  using Exact = ExactArithmetic<T>;

  void setBounds(Index column, const T& l, const T& r, const T& c) {
    frame_.l[column] = l;
    frame_.r[column] = r;
    frame_.c[column] = c;
  }

  const Vanu<T>& problem_;
  CoordinateFrame<T>& frame_;
  Basis<T, R>& basis_;
  /// Half width of the box.
  const T R_;
};

/// While a lattice is made it is none if an exception ends that.
template <class T>
class NoneUntilMade {
 public:
  explicit NoneUntilMade(CoordinateFrame<T>& frame) : frame_(frame) {}
  NoneUntilMade(const NoneUntilMade&) = delete;
  NoneUntilMade& operator=(const NoneUntilMade&) = delete;
  ~NoneUntilMade() {
    if (!isMade_) frame_.latticeKind = LatticeKind::none;
  }
  void setMade() { isMade_ = true; }

 private:
  CoordinateFrame<T>& frame_;
  bool isMade_ = false;
};

template <class T>
void reportCounts(const Vanu<T>& problem) {
  const auto count = [](Index value) { return std::to_string(value); };
  report(reportStream(), "Optimization program: Targets = " + count(problem.At.rowCount()) +
                             ", Equations = " + count(problem.Ag.rowCount()) +
                             ", Inequations = " + count(problem.Au.rowCount()) +
                             ", Variables = " + count(problem.rx.dimension()));
}

/// Turns the lattice of all variables into the lattice of the solutions of the equations.
template <class T, class R>
void removeEquations(Lattice<T, R>& lattice, Array<Matrix<T>> transformations, Index equations) {
  Basis<T, R>& basis = lattice.basis;
  // A lattice that was just generated has no stored vectors.
  assert(lattice.found.isEmpty());
  basis.TT = std::move(transformations);
  Matrix<T> rows(basis.B());
  lattice.applyTransformations(rows);
  basis.replace(std::move(rows));
  lattice.resize(basis.n - equations, 0, Vectors::keep);
  const CoordinateBlock moduli = lattice.blocks().moduli;
  lattice.removeColumns(ColumnsOf::moduli, moduli.count, moduli.first);
  lattice.frame.modsInLattice = false;
  basis.B_save = basis.untransformed();
  basis.savedFactors.clear();
}

}  // namespace latticegenerate

template <class T, class R>
bool Lattice<T, R>::prepareLattice() {
  if (params.verb == 2) latticegenerate::reportCounts<T>(*this);
  if (frame.latticeKind != LatticeKind::none) {
    // Stored vectors belong to the old basis: only their points can be kept.
    if (frame.latticeKind == LatticeKind::full) sol2star();
    reset(nullptr, LatPath::keep);
  }
  latticegenerate::NoneUntilMade<T> making(frame);
  const StarsAside<T> aside(file.stars);
  Array<Matrix<T>> transformations;
  const Index equations = this->Ag.rowCount();
  if (equations > 0) {
    generateLattice(LatticeKind::equations);
    reduceEquations();
    transformations = std::move(basis.TT);
    removeColumns(ColumnsOf::equations, equations, 1);
    const bool isKnownSolvable =
        aside.areThere() || found.solutions.dimension() > 0 || found.bestVector.isSet();
    if (!isKnownSolvable && !extractInhomogeneous().isSet())
      fail("The equation system has no integer solution :(");
  }
  VectorBackup<T, R> backup = backupVectors(BackupMode::coordinates);
  generateLattice(LatticeKind::full);
  if (transformations.dimension() > 0)
    latticegenerate::removeEquations(*this, std::move(transformations), equations);
  else
    frame.modsInLattice = false;
  pushTransformation(Stack::restart);
  restoreVectors(std::move(backup), BackupMode::coordinates);
  making.setMade();
  return true;
}

template <class T, class R>
void Lattice<T, R>::generateLattice(LatticeKind kind) {
  const bool hasEquations = kind == LatticeKind::equations;
  frame.equationsRemoved = !hasEquations;
  frame.rangeMultiple = computeR(kind);
  const CoordinateBlocks blocks = CoordinateFrame<T>::generated(*this, kind);
  frame.modsInLattice = blocks.moduli.count > 0;
  // New entries are 0 if there are no old rows.
  basis.dropRows();
  run.notifyPreparation();
  resize(blocks.variables.count + blocks.moduli.count + 1, blocks.moduli.last() + 1,
         Vectors::discard);
  // They hold vectors of another lattice, with other lengths.
  found.clearCollections();
  PreparationPace pace(run);
  latticegenerate::Columns<T, R> columns(*this, frame, basis);
  for (Index i = 1; i <= blocks.equations.count; ++i) {
    columns.setEquation(i, blocks.equations.at(i));
    pace.passed(basis.n);
  }
  for (const Index j : blocks.target) columns.setTarget(j);
  for (Index i = 1; i <= blocks.inequations.count; ++i) {
    columns.setInequation(i, blocks.inequations.at(i));
    pace.passed(basis.n);
  }
  for (Index i = 1; i < basis.n; ++i) columns.setVariable(i, blocks.variables.at(i));
  columns.setLast();
  for (Index i = 1; i <= basis.n; ++i) {
    for (const T& entry : basis.B_save[i]) checkedRange(entry, "B_save overflow2");
    pace.passed(basis.m);
  }
  frame.recordBounds();
  frame.latticeKind = kind;
  basis.startFromSaved(this->homValue);
  gramSchmidt.clearFactors();
}

template <class T, class R>
T Lattice<T, R>::computeR(LatticeKind kind) {
  T& multiple = frame.rangeMultiple;
  multiple = T(1);
  extendBounds(true);
  if (kind == LatticeKind::equations) return multiple;
  for (Index i = 1; i <= this->Au.rowCount(); ++i) {
    const T width = this->ru[i] - this->lu[i];
    if (NumberTraits<T>::isZero(width)) fail("ineq bounds error1");
    latticegenerate::makeMultipleOf(multiple, width);
  }
  if (this->atuValid) {
    this->ltu = lcmAdjust(multiple, this->rtu, this->ltu);
    const T width = this->rtu - this->ltu;
    if (!NumberTraits<T>::isZero(width)) latticegenerate::makeMultipleOf(multiple, width);
  }
  return multiple;
}

template <class T, class R>
void Lattice<T, R>::extendBounds(bool useLcm) {
  T& multiple = frame.rangeMultiple;
  for (Index i = 1; i <= this->rx.dimension(); ++i) {
    T& upper = this->rx[i];
    if (NumberTraits<T>::isInfinite(this->lx[i]) || NumberTraits<T>::isInfinite(upper)) continue;
    if (this->fd[i] == FreedomDegree::rightFree || this->fd[i] == FreedomDegree::free)
      upper -= lcmAdjust(multiple, upper, T());
    if (useLcm && !NumberTraits<T>::isZero(upper)) latticegenerate::makeMultipleOf(multiple, upper);
  }
}

template <class T, class R>
void Lattice<T, R>::removeColumns(ColumnsOf columns, Index count, Index position) {
  if (count == 0) return;
  const bool ofEquations = columns == ColumnsOf::equations;
  VectorBackup<T, R> backup = backupVectors(BackupMode::columns, count, position);
  // The backup has moved all stored vectors out.
  assert(found.isEmpty());
  const Index rows = ofEquations ? basis.n - count : basis.n;
  const Matrix<T> raw = ofEquations ? basis.untransformed() : basis.B_save;
  Matrix<T> working = withoutColumns(basis.B(), rows, position, count);
  Matrix<T> saved = withoutColumns(raw, rows, position, count);
  frame.remove(position, count);
  for (Vector<T>* vector : {&basis.scale, &basis.translation})
    removeElements(*vector, position, count);
  resize(rows, basis.m - count, Vectors::keep);
  if (ofEquations) pushTransformation(Stack::restart);
  basis.replace(std::move(working));
  basis.B_save = std::move(saved);
  if (ofEquations)
    frame.equationsRemoved = true;
  else
    frame.modsInLattice = false;
  restoreVectors(std::move(backup), BackupMode::vectors);
}

}  // namespace starsift

// Lattice: construction, reset, resize, assignment, and the reactions to changed
// parameters.
#pragma once

#include <algorithm>
#include <memory>
#include <utility>

#include "lattice/Lattice.h"

namespace starsift {

namespace latticerecord {

/// The least number of exchanges that a pass is granted.
constexpr Index leastSwapBudget = 100;

template <class T>
Vector<T> constant(Index dimension, const T& value) {
  Vector<T> vector(dimension);
  std::fill(vector.begin(), vector.end(), value);
  return vector;
}

/// Sets the size; new entries are 0, also where the storage still holds old ones.
template <class T>
void resizeFilled(Array<T>& entries, Index dimension) {
  const Index before = entries.dimension();
  entries.resize(dimension, false);
  for (Index i = before + 1; i <= dimension; ++i) entries[i] = T();
}

template <class T>
void resizeFilled(Matrix<T>& matrix, Index rows, Index columns) {
  const Index before = matrix.rowCount();
  matrix.resize(rows, columns, false);
  for (Index i = before + 1; i <= rows; ++i) std::fill(matrix[i].begin(), matrix[i].end(), T());
}

template <class T, class U>
void convertAll(Array<T>& target, const Array<U>& source) {
  target.resize(source.dimension(), false);
  for (Index i = 1; i <= source.dimension(); ++i) target[i].convertFrom(source[i], false);
}

template <class T, class U, class R>
void convertSet(SortedSet<HeuristicVector<T, R>>& target,
                const SortedSet<HeuristicVector<U, R>>& source) {
  target.clear();
  target.setLimit(source.limit());
  for (const HeuristicVector<U, R>& vector : source) {
    auto copy = std::make_unique<HeuristicVector<T, R>>();
    copy->convertFrom(vector, false);
    copy->score = vector.score;
    target.append(std::move(copy));
  }
}

}  // namespace latticerecord

template <class T, class R>
Lattice<T, R>::Lattice(const Matrix<T>* basis) : params(this) {
  reset(basis, true);
}

template <class T, class R>
Lattice<T, R>::~Lattice() = default;

template <class T, class R>
void Lattice<T, R>::reset(const Matrix<T>* basis, bool clearFileName) {
  B_save = basis != nullptr ? *basis : Matrix<T>();
  n = B_save.rowCount();
  m = B_save.columnCount();
  pushTransformation(false);
  resize(n, m, true);
  if (clearFileName) latFile.clear();
  collected.clear();
  chosen.clear();
  using enum MainMutexVariable;
  for (const MainMutexVariable counter : {counter6, counter7, counter5})
    runVariables[counter].set("0");
  rangeMultiple = T();
  supLimit = R();
  for (Vector<T>* vector : {&c, &l, &r, &lSave, &rSave}) *vector = Vector<T>(m);
  for (Vector<R>* vector : {&cLen, &bSq, &vectorAmounts}) *vector = Vector<R>(n);
  std::fill(vectorMarks.begin(), vectorMarks.end(), Index());
  std::fill(vecStatus.begin(), vecStatus.end(), StatusWord());
  latticeKind = LatticeKind::none;
  equationsRemoved = true;
  modsInLattice = false;
  if (consistencyForced) setTracking(false);
  consistencyForced = false;
  deepInsertions = 0;
  lastPass = PassCounts();
  keepDependent = false;
  scale = latticerecord::constant(m, T(1));
  translation = Vector<T>(m);
  B = B_save;
  rowImages.forgetAll();
  checkedRows.forgetAll(n);
  homScaled = this->homValue;
  clearFactors();
}

template <class T, class R>
void Lattice<T, R>::resize(Index newN, Index newM, bool discard) {
  if (newN < 0 || newM < 0) return;
  const Index columns = newM > 0 ? newM : m;
  latticerecord::resizeFilled(B, newN, columns);
  rowImages.forgetAll();
  checkedRows.forgetAll(newN);
  latticerecord::resizeFilled(B_save, newN, columns);
  latticerecord::resizeFilled(mu, newN, newN);
  for (Matrix<T>& transformation : TT)
    if (transformation.rowCount() < newN) latticerecord::resizeFilled(transformation, newN, newN);
  // Slot 0 is live without vectors too.
  latticerecord::resizeFilled(vecStatus, std::max(newN, Index{1}));
  vecStatus.resize(newN, false);
  latticerecord::resizeFilled(vectorMarks, newN);
  for (Vector<R>* vector : {&cLen, &bSq, &vectorAmounts}) vector->resize(newN, false);
  const Index known = scale.dimension();
  for (Vector<T>* vector : {&c, &l, &r, &lSave, &rSave, &scale, &translation})
    vector->resize(columns, false);
  for (Index i = known + 1; i <= columns; ++i) scale[i] = T(1);
  clearFactors();
  n = newN;
  m = columns;
  swapBudgetFloor = std::max(n, latticerecord::leastSwapBudget);
  swapBudget = swapBudgetFloor;
  if (discard)
    discardVectors();
  else
    fitStoredVectors();
}

template <class T, class R>
void Lattice<T, R>::discardVectors() {
  bestVector.clear();
  bestRecord = VectorScore<R>();
  bestTarget = FiledSolution<T>();
  solutions.clear();
  solutionIndex.forgetAll();
}

template <class T, class R>
void Lattice<T, R>::fitStoredVectors() {
  if (bestVector.isSet()) bestVector.resize(m, false);
  if (bestTarget.isSet()) bestTarget.resize(m, false);
  for (FiledSolution<T>& solution : solutions) solution.resize(m, false);
  solutionIndex.forgetAll();
  for (auto* set : {&collected, &chosen})
    for (HeuristicVector<T, R>& vector : *set) vector.resize(m, false);
}

template <class T, class R>
void Lattice<T, R>::clearFactors() {
  savedFactors.clear();
  workingFactors.clear();
  lqCache.clear();
  Ps.clear();
  _d.clear();
  for (Matrix<R>* factor : {&Q, &Lr, &L}) *factor = Matrix<R>();
  releaseFactors(1);
}

template <class T, class R>
template <class U>
void Lattice<T, R>::assignFrom(const Lattice<U, R>& other, bool keepParams) {
  if (static_cast<const void*>(this) == static_cast<const void*>(&other)) return;
  using Number = NumberConversion<T, U>;
  Vanu<T>::convertFrom(other);
  optOriginal.convertFrom(other.optOriginal);
  file.convertFrom(other.file);
  homScaled = Number::convert(other.homScaled);
  n = other.n;
  m = other.m;
  latFile = other.latFile;
  outputSwitch = other.outputSwitch;
  terminationSwitch = other.terminationSwitch;
  if (!keepParams) params.convertFrom(other.params);
  bestVector.convertFrom(other.bestVector, false);
  bestRecord = other.bestRecord;
  bestTarget.convertFrom(other.bestTarget, false);
  latticerecord::convertAll(solutions, other.solutions);
  lastFiled = std::max(lastFiled, other.lastFiled);
  solutionIndex.forgetAll();
  latticerecord::convertAll(TT, other.TT);
  B_save.convertFrom(other.B_save, false);
  B.convertFrom(other.B, false);
  forgetBasis();
  Q = other.Q;
  mu = other.mu;
  bSq = other.bSq;
  cLen = other.cLen;
  runVariables = other.runVariables;
  rangeMultiple = Number::convert(other.rangeMultiple);
  c.convertFrom(other.c, false);
  l.convertFrom(other.l, false);
  r.convertFrom(other.r, false);
  lSave.convertFrom(other.lSave, false);
  rSave.convertFrom(other.rSave, false);
  supLimit = other.supLimit;
  lEqualsR = other.lEqualsR;
  swapBudgetFloor = other.swapBudgetFloor;
  swapBudget = other.swapBudget;
  lastPass = other.lastPass;
  restarts = other.restarts;
  latticeKind = other.latticeKind;
  equationsRemoved = other.equationsRemoved;
  modsInLattice = other.modsInLattice;
  savedFactors.convertFrom(other.savedFactors);
  workingFactors.convertFrom(other.workingFactors);
  vecStatus = other.vecStatus;
  consistencyForced = other.consistencyForced;
  deepInsertions = other.deepInsertions;
  keepDependent = other.keepDependent;
  lqCache = other.lqCache;
  _d = other._d;
  Lr = other.Lr;
  L = other.L;
  Ps = other.Ps;
  vectorAmounts = other.vectorAmounts;
  vectorMarks = other.vectorMarks;
  latticerecord::convertSet(collected, other.collected);
  latticerecord::convertSet(chosen, other.chosen);
  scale.convertFrom(other.scale, false);
  translation.convertFrom(other.translation, false);
}

template <class T, class R>
template <class U>
void Lattice<T, R>::convertFrom(const Lattice<U, R>& other) {
  assignFrom(other, false);
}

template <class T, class R>
void Lattice<T, R>::release() {
  optOriginal = Vanu<T>();
  file.release();
}

template <class T, class R>
void Lattice<T, R>::consistencyChanged(bool on) {
  if (this->reactionsOff || !on) return;
  B_save = backMapAll(B);
  pushTransformation(false);
  savedFactors.clear();
  this->trackingRestarted = true;
}

template <class T, class R>
void Lattice<T, R>::scaleChanged() {
  if (this->reactionsOff) return;
  Matrix<T> raw = backMapAll(B);
  scale = latticerecord::constant(m, T(1));
  homScaled = this->homValue;
  replaceBasis(forwardMapAll(raw));
}

template <class T, class R>
void Lattice<T, R>::translateChanged() {
  if (this->reactionsOff) return;
  Matrix<T> raw(B);
  // The parameter has its new value already. The translation is zero unless it was
  // on, so taking it out is right both ways.
  for (Vector<T>& row : raw) row = mapped(row, true, true);
  translation = Vector<T>(m);
  replaceBasis(forwardMapAll(raw));
}

template <class T, class R>
void Lattice<T, R>::replaceBasis(Matrix<T> rows) {
  B = std::move(rows);
  forgetBasis();
}

template <class T, class R>
void Lattice<T, R>::forgetBasis() {
  rowImages.forgetAll();
  checkedRows.forgetAll(n);
  std::fill(vecStatus.begin(), vecStatus.end(), StatusWord());
  workingFactors.clear();
}

}  // namespace starsift

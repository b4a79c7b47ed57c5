#include "lattice/state/CoordinateFrame.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "algorithms/reduction/SizeReduce.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "problem/Rows.h"

namespace starsift {

namespace {

/// The five vectors with an entry per coordinate.
template <class Frame>
auto vectorsOf(Frame& frame) {
  return std::array{&frame.c, &frame.l, &frame.r, &frame.lSave, &frame.rSave};
}

/// Consecutive blocks of these sizes; those of the target and of the inequations are empty in
/// the equation lattice.
template <class T>
CoordinateBlocks laidOut(const Vanu<T>& problem, Index equations, bool hasRows, bool hasModuli) {
  CoordinateBlocks blocks;
  Index next = 1;
  const auto append = [&next](Index count) {
    const CoordinateBlock block{next, count};
    next += count;
    return block;
  };
  blocks.equations = append(equations);
  blocks.target = append(hasRows && problem.atuValid ? 1 : 0);
  blocks.inequations = append(hasRows ? problem.Au.rowCount() : 0);
  blocks.variables = append(problem.rx.dimension());
  blocks.deviations = {next - problem.deviationCount, problem.deviationCount};
  blocks.moduli = append(hasModuli ? problem.modulusCount() : 0);
  return blocks;
}

}  // namespace

template <class T>
void CoordinateFrame<T>::clear(Index m) {
  *this = CoordinateFrame();
  resize(m);
}

template <class T>
void CoordinateFrame<T>::resize(Index m) {
  for (Vector<T>* vector : vectorsOf(*this)) vector->resize(m, false);
}

template <class T>
template <class U>
void CoordinateFrame<T>::convertFrom(const CoordinateFrame<U>& other) {
  latticeKind = other.latticeKind;
  equationsRemoved = other.equationsRemoved;
  modsInLattice = other.modsInLattice;
  rangeMultiple = NumberConversion<T, U>::convert(other.rangeMultiple);
  const auto from = vectorsOf(other);
  const auto to = vectorsOf(*this);
  for (std::size_t i = 0; i < to.size(); ++i) to[i]->convertFrom(*from[i], false);
  lEqualsR = other.lEqualsR;
  supLimit = other.supLimit;
}

template <class T>
void CoordinateFrame<T>::recordBounds() {
  lSave = l;
  rSave = r;
  lEqualsR = l == r;
  recordLimit();
}

template <class T>
void CoordinateFrame<T>::recordLimit() {
  supLimit = 3 * std::max(squaredNorm<long double>(l), squaredNorm<long double>(r));
}

template <class T>
void CoordinateFrame<T>::remove(Index position, Index count) {
  for (Vector<T>* vector : vectorsOf(*this)) removeElements(*vector, position, count);
  recordLimit();
}

template <class T>
CoordinateBlocks CoordinateFrame<T>::blocks(const Vanu<T>& problem, Index m) const {
  const bool isFull = latticeKind == LatticeKind::full;
  const bool hasEquations = latticeKind == LatticeKind::equations && !equationsRemoved;
  const CoordinateBlocks result =
      laidOut(problem, hasEquations ? problem.Ag.rowCount() : 0, isFull, modsInLattice);
  assert(latticeKind == LatticeKind::none || result.moduli.last() == m - 1);
  static_cast<void>(m);
  return result;
}

template <class T>
CoordinateBlocks CoordinateFrame<T>::generated(const Vanu<T>& problem, LatticeKind kind) {
  const bool isFull = kind == LatticeKind::full;
  return laidOut(problem, isFull ? 0 : problem.Ag.rowCount(), isFull, true);
}

template <class T>
Index CoordinateFrame<T>::firstChecked(const Vanu<T>& problem) const {
  return latticeKind == LatticeKind::full && problem.atuValid ? 2 : 1;
}

template <class T>
bool CoordinateFrame<T>::hasLastInBox(const T& last) const {
  const Index m = l.dimension();
  return l[m] <= last && last <= r[m];
}

template <class T>
bool CoordinateFrame<T>::liesInBox(const Vanu<T>& problem, const Vector<T>& vector) const {
  const Index m = l.dimension();
  if (!hasLastInBox(vector[m])) return false;
  const CoordinateBlock variables = blocks(problem, m).variables;
  for (Index i = 1; i <= variables.count; ++i) {
    const Index j = variables.at(i);
    const FreedomDegree kind = problem.fd[i];
    if (kind == FreedomDegree::free) continue;
    if (vector[j] < l[j] && kind != FreedomDegree::leftFree) return false;
    if (vector[j] > r[j] && kind != FreedomDegree::rightFree) return false;
  }
  for (Index j = variables.first - 1; j >= firstChecked(problem); --j)
    if (vector[j] < l[j] || vector[j] > r[j]) return false;
  return true;
}

template class CoordinateFrame<long double>;
template class CoordinateFrame<QQ>;
template void CoordinateFrame<long double>::convertFrom(const CoordinateFrame<long double>&);
template void CoordinateFrame<long double>::convertFrom(const CoordinateFrame<QQ>&);
template void CoordinateFrame<QQ>::convertFrom(const CoordinateFrame<QQ>&);
template void CoordinateFrame<QQ>::convertFrom(const CoordinateFrame<long double>&);

}  // namespace starsift

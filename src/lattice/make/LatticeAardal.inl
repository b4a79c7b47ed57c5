// Lattice: removal of the equations by reduction. The coordinates of equations get so large a
// weight that they are 0 in a part of the reduced basis, which is a basis of the kernel lattice:
// the integer solutions of the homogeneous equations.
#pragma once

#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

#include "algorithms/exact/LastCoordinate.h"
#include "lattice/Lattice.h"
#include "numbers/ExactArithmetic.h"
#include "system/Console.h"

namespace starsift {

namespace latticeaardal {

/// Settings of the reduction for its lifetime: transformations are tracked, reports are off.
template <class T, class R>
class WithTracking {
 public:
  explicit WithTracking(Lattice<T, R>& lattice)
      : lattice_(lattice),
        consistency_(lattice.params.consistency),
        eenum_(lattice.params.eenum),
        deep_(lattice.params.deep),
        verb_(lattice.params.verb) {
    lattice.setTracking(true);
    lattice.params.eenum = true;
    // Deep insertion never inserts at the first position. If the vector there has to become
    // shorter, the weight would grow until R can't hold it.
    lattice.params.deep = false;
    // Tracking stays on to the end, even if the lattice had turned it on by itself.
    lattice.run.consistencyForced = false;
    // The switch for extended output belongs to the process and stays.
    lattice.params.verb.setTextSilently("0");
  }
  WithTracking(const WithTracking&) = delete;
  WithTracking& operator=(const WithTracking&) = delete;
  ~WithTracking() {
    lattice_.setTracking(consistency_);
    lattice_.params.eenum = eenum_;
    lattice_.params.deep = deep_;
    lattice_.params.verb.setTextSilently(std::to_string(verb_));
  }

 private:
  Lattice<T, R>& lattice_;
  bool consistency_;
  bool eenum_;
  bool deep_;
  long verb_;
};

/// Reorders the first `active` vectors so that vectors that solve the homogeneous equations come
/// last; returns the number of the other vectors.
template <class T, class R>
Index sinkSolutions(Lattice<T, R>& lattice, Index active) {
  Basis<T, R>& basis = lattice.basis;
  const CoordinateBlock equations = lattice.blocks().equations;
  const auto solves = [&](const Vector<T>& row) {
    return std::all_of(equations.begin(), equations.end(),
                       [&row](Index j) { return row[j] == T(); });
  };
  for (Index i = 1; i <= active;) {
    if (!solves(basis.B()[i])) {
      ++i;
      continue;
    }
    for (Index j = i; j < active; ++j)
      basis.swap(j, j + 1, j > i ? RowStatus::keep : RowStatus::forget);
    --active;
  }
  return active;
}

/// The reduction itself; reports as with `verb`.
template <class T, class R>
void reduceUntilKernel(Lattice<T, R>& lattice, long verb) {
  using Exact = ExactArithmetic<T>;
  const CoordinateBlock equations = lattice.blocks().equations;
  const Index n = lattice.basis.n;
  T weight(10 * lattice.Ag.columnCount());
  if (verb == 2) {
    reportStream() << openStamp(false) << " Aardal reducing ... [ NN = " << weight << std::flush;
    stampOutputTime();
  }
  for (Index active = n;;) {
    for (const Index j : equations) lattice.setScale(j, weight);
    lattice.sortBasis(active);
    lattice.reduce(active);
    lattice.sortBasis(active);
    lattice.verifyTransformation(LatticeKind::equations, Announce::silent);
    active = sinkSolutions(lattice, active);
    if (active <= equations.count) break;
    weight = Exact::product(weight, weight);
    if (verb >= 2) {
      reportStream() << ' ' << weight << std::flush;
      stampOutputTime();
    }
  }
  for (Index i = 1; i <= std::min(equations.count, n - equations.count); ++i)
    lattice.basis.swap(i, n - i + 1, i >= 2 ? RowStatus::keep : RowStatus::forget);
}

}  // namespace latticeaardal

template <class T, class R>
void Lattice<T, R>::reduceEquations() {
  {
    const long verb = params.verb;
    const Vector<T> scale(basis.scale);
    const latticeaardal::WithTracking<T, R> tracking(*this);
    pushTransformation(Stack::restart);
    latticeaardal::reduceUntilKernel(*this, verb);
    for (const Index j : blocks().equations) setScale(j, scale[j]);
  }
  if (params.verb >= 2) {
    reportStream() << " ]" << closeStamp(false);
    stampOutputTime();
  }
}

template <class T, class R>
Array<Matrix<T>> Lattice<T, R>::aardalReduce() {
  auto inner = std::make_unique<Lattice>();
  inner->assignFrom(*this, Settings::copy);
  inner->run.observer = run.observer;
  inner->reduceEquations();
  assignFrom(*inner, Settings::keep);
  return basis.TT;
}

template <class T, class R>
Vector<T> Lattice<T, R>::extractInhomogeneous() {
  if (params.verb > 1) {
    reportStream() << openStamp(false) << " Extracting current inhomogenous vector ...";
    stampOutputTime();
  }
  Matrix<T> rows = basis.untransformed();
  Vector<T> result;
  while (!result.isSet()) {
    Index pick = 0;
    for (Index i = 1; i <= basis.n && !result.isSet(); ++i) {
      if (!lastIsLess(rows, i, pick)) continue;
      pick = i;
      checkSolution(rows[i], Space::raw, 0, Announce::full);
      if (NumberTraits<T>::equal(NumberTraits<T>::absolute(rows[i][basis.m]),
                                 NumberTraits<T>::absolute(this->homValue)))
        result = rows[i];
    }
    if (pick == 0 || !reduceLast(rows, pick)) break;
  }
  if (params.verb > 1 && result.isSet()) {
    reportStream() << closeStamp(false);
    stampOutputTime();
  }
  return result;
}

}  // namespace starsift

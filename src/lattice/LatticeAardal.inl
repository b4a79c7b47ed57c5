// Lattice: equations out of the lattice by reduction. Coordinates of equations are made so
// heavy that the first vectors of a reduced basis have none: a basis of the solutions of
// the homogeneous equations.
#pragma once

#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>

#include "algorithms/exact/LastCoordinate.h"
#include "lattice/Lattice.h"
#include "numbers/ExactArithmetic.h"
#include "system/Console.h"

namespace starsift {

template <class T, class R>
Array<Matrix<T>> Lattice<T, R>::aardalReduce() {
  auto inner = std::make_unique<Lattice>();
  inner->assignFrom(*this, false);
  inner->observer = observer;
  inner->prepareAardal();
  inner->reduceEquations(params.verb);
  const Vector<T> kept = scale;
  for (Index i = 1; i <= this->Ag.rowCount(); ++i) inner->setScale(i, kept[i]);
  assignFrom(*inner, true);
  if (params.verb >= 2) {
    std::cout << " ]" << closeStamp(false);
    stampOutputTime();
  }
  return TT;
}

template <class T, class R>
void Lattice<T, R>::prepareAardal() {
  setTracking(true);
  params.eenum = true;
  // It never inserts at the first position. Where the vector there has to become shorter the
  // weight would grow until R can't hold it.
  params.deep = false;
  // Tracking goes on to the end here, also where the lattice had turned it on before.
  consistencyForced = false;
  // The switch for extended output is the process's: it follows the outer lattice.
  params.verb.setTextSilently("0");
  pushTransformation(false);
}

template <class T, class R>
void Lattice<T, R>::reduceEquations(long verb) {
  using Exact = ExactArithmetic<T>;
  const Index equations = this->Ag.rowCount();
  T weight(10 * this->Ag.columnCount());
  if (verb == 2) {
    std::cout << openStamp(false) << " Aardal reducing ... [ NN = " << weight << std::flush;
    stampOutputTime();
  }
  for (Index active = n;;) {
    for (Index i = 1; i <= equations; ++i) setScale(i, weight);
    sortBasis(active);
    reduce(active);
    sortBasis(active);
    verifyTransformation(true, true);
    active = sinkSolutions(active);
    if (active <= equations) break;
    weight = Exact::product(weight, weight);
    if (verb >= 2) {
      std::cout << ' ' << weight << std::flush;
      stampOutputTime();
    }
  }
  for (Index i = 1; i <= std::min(equations, n - equations); ++i)
    swapBasisVectors(i, n - i + 1, i >= 2);
}

template <class T, class R>
Index Lattice<T, R>::sinkSolutions(Index active) {
  const auto solves = [this](const Vector<T>& row) {
    for (Index j = 1; j <= this->Ag.rowCount(); ++j)
      if (!(row[j] == T())) return false;
    return true;
  };
  for (Index i = 1; i <= active;) {
    if (!solves(B[i])) {
      ++i;
      continue;
    }
    for (Index j = i; j < active; ++j) swapBasisVectors(j, j + 1, j > i);
    --active;
  }
  return active;
}

template <class T, class R>
Vector<T> Lattice<T, R>::extractInhomogeneous() {
  if (params.verb > 1) {
    std::cout << openStamp(false) << " Extracting current inhomogenous vector ...";
    stampOutputTime();
  }
  Matrix<T> rows = backMapAll(B);
  Vector<T> found;
  while (!found.isSet()) {
    Index pick = 0;
    for (Index i = 1; i <= n && !found.isSet(); ++i) {
      if (!lastIsLess(rows, i, pick)) continue;
      pick = i;
      checkSolution(rows[i], false, 0, false);
      if (NumberTraits<T>::equal(NumberTraits<T>::absolute(rows[i][m]),
                                 NumberTraits<T>::absolute(this->homValue)))
        found = rows[i];
    }
    if (pick == 0 || !reduceLast(rows, pick)) break;
  }
  if (params.verb > 1 && found.isSet()) {
    std::cout << closeStamp(false);
    stampOutputTime();
  }
  return found;
}

}  // namespace starsift

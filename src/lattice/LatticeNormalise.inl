// Lattice: the problem as read brought to the normal form that a lattice is made from.
// The steps are functions of the floor below; here stands their order.
#pragma once

#include <utility>

#include "lattice/Lattice.h"
#include "problem/Bounds.h"
#include "problem/DependentRows.h"
#include "problem/Inequations.h"
#include "problem/IntegerRows.h"
#include "problem/RowBounds.h"
#include "problem/Targets.h"

namespace starsift {

namespace latticenormalise {

/// One-sided inequations with slacks, targets to reach with deviations, and with `hasTargetRange`
/// the range of the target value.
template <class T>
Vanu<T> lifted(Vanu<T> problem, bool hasTargetRange) {
  dropUselessInequations(problem);
  transferFakeInequations(problem, true);
  liftOneSidedInequations(problem);
  liftFiniteTargets(problem);
  aggregateTargets(problem);
  if (hasTargetRange) addTargetThreshold(problem);
  problem.lifted = true;
  return problem;
}

}  // namespace latticenormalise

template <class T, class R>
void Lattice<T, R>::normalise(bool generate, bool force) {
  if (force && optOriginal.lifted) optOriginal = optAsRead;
  const bool first = !optOriginal.lifted;
  if (first) {
    // A step that throws leaves the problem as it was read.
    Vanu<T> problem = latticenormalise::lifted(optOriginal, generate);
    optAsRead = std::move(optOriginal);
    optOriginal = std::move(problem);
  }
  const bool reactionsWereOff = this->reactionsOff;
  const bool trackingWasRestarted = this->trackingRestarted;
  Vanu<T>::operator=(optOriginal);
  this->reactionsOff = reactionsWereOff;
  this->trackingRestarted = trackingWasRestarted;
  normaliseCopy(params.verb == 2, first);
}

template <class T, class R>
void Lattice<T, R>::normaliseCopy(bool verbose, bool first) {
  Vanu<T>& problem = *this;
  // A search makes the copy anew many times a second.
  const bool tell = verbose || first;
  roundBounds(problem);
  removeFixedVariables(problem);
  scaleDecimalVariables(problem);
  addModulusColumns(problem);
  toIntegerRows(problem);
  dropZeroModulusColumns(problem);
  removeDependentEquations(problem, verbose);
  swapHalfFreeVariables(problem, tell);
  checkRows(problem, RowKind::inequations);
  // Tightening can leave an inequation one value only.
  if (transferFakeInequations(problem, tell) > 0) removeDependentEquations(problem, verbose);
  checkRows(problem, RowKind::equations);
  aggregateTargets(problem);
  shiftLowerBounds(problem);
}

template <class T, class R>
const Vanu<T>& Lattice<T, R>::problemAsRead() const {
  return optOriginal.lifted ? optAsRead : optOriginal;
}

}  // namespace starsift

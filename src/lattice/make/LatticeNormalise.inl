// Lattice: from the problem as read to the normal form that a lattice is made from. The steps
// are functions of the floor `problem`; this file has their order.
#pragma once

#include <utility>

#include "lattice/Lattice.h"
#include "problem/Bounds.h"
#include "problem/DependentRows.h"
#include "problem/Inequations.h"
#include "problem/IntegerRows.h"
#include "problem/RowBounds.h"
#include "problem/Targets.h"
#include "problem/TightenBounds.h"

namespace starsift {

namespace latticenormalise {

/// The problem with slacks for one-sided inequations, deviations for targets with a finite goal
/// and, with `hasTargetRange`, the range of the target value.
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
void Lattice<T, R>::setProblem(Vanu<T> problem) {
  Vanu<T>& target = file.editProblem();
  problem.optFile = std::move(target.optFile);
  problem.solFile = std::move(target.solFile);
  target = std::move(problem);
  optOriginal = Vanu<T>();
}

template <class T, class R>
bool Lattice<T, R>::tightenBounds() requires std::same_as<T, QQ> {
  if (optOriginal.lifted) fail("tightenBounds: the problem is normalised");
  optOriginal = file.problem();
  // clang 14 instantiates the body also where the constraint fails.
  if constexpr (std::same_as<T, QQ>) return starsift::tightenBounds(optOriginal);
  return true;
}

template <class T, class R>
void Lattice<T, R>::normalise(TargetRange range, From from) {
  if (from == From::read) optOriginal = Vanu<T>();
  const bool first = !optOriginal.lifted;
  if (first) {
    // optOriginal is unchanged if a step throws.
    const bool isTightened = optOriginal.rx.isSet();
    optOriginal = latticenormalise::lifted(isTightened ? optOriginal : file.problem(),
                                           range == TargetRange::find);
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
  // A search rebuilds the copy many times a second.
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
  // Tightening can leave an inequation with a single value.
  if (transferFakeInequations(problem, tell) > 0) removeDependentEquations(problem, verbose);
  checkRows(problem, RowKind::equations);
  aggregateTargets(problem);
  shiftLowerBounds(problem);
}

}  // namespace starsift

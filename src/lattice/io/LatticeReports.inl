// Lattice: console reports of the solutions.
#pragma once

#include "files/Report.h"
#include "lattice/Lattice.h"
#include "numbers/Conversion.h"

namespace starsift {

namespace latticereports {

/// Norms are rounded to T.
template <class T>
void add(SearchStatus<T>& status, const Star<QQ>& star) {
  append(status.solutionTimes, star.time);
  const T norm = NumberConversion<T, QQ>::nearest(star.targetNorm);
  if (!(norm < status.bestTargetNorm)) return;
  status.bestTargetNorm = norm;
  status.bestSlackNorm = NumberConversion<T, QQ>::nearest(star.slackNorm);
  status.bestTime = star.time;
}

}  // namespace latticereports

template <class T, class R>
std::string Lattice<T, R>::solutionsText() const {
  return file.solutionsText();
}

template <class T, class R>
void Lattice<T, R>::writeSolutions(std::ostream& stream) const {
  file.writeSolutions(stream);
}

template <class T, class R>
std::string Lattice<T, R>::starReport(Index i) const {
  return file.starReport(i);
}

template <class T, class R>
std::string Lattice<T, R>::statusText(const Array<Star<QQ>>& others, Index further) const {
  SearchStatus<T> status;
  status.hasTarget = this->atuValid;
  status.bestTargetNorm = found.bestTarget.targetNorm;
  status.bestSlackNorm = found.bestTarget.slackNorm;
  status.bestTime = found.bestTarget.time;
  status.benchmark = params.bench != 0;
  status.solutionTimes.resize(found.solutions.dimension(), false);
  for (Index i = 1; i <= found.solutions.dimension(); ++i)
    status.solutionTimes[i] = found.solutions[i].time;
  for (const Star<QQ>& star : others) latticereports::add(status, star);
  status.furtherSolutions = further;
  return starsift::statusText(status);
}

}  // namespace starsift

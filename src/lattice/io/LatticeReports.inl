// Lattice: console reports of the solutions.
#pragma once

#include "files/Report.h"
#include "lattice/Lattice.h"

namespace starsift {

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
std::string Lattice<T, R>::statusText() const {
  SearchStatus<T> status;
  status.hasTarget = this->atuValid;
  status.bestTargetNorm = found.bestTarget.targetNorm;
  status.bestSlackNorm = found.bestTarget.slackNorm;
  status.bestTime = found.bestTarget.time;
  status.benchmark = params.bench != 0;
  status.solutionTimes.resize(found.solutions.dimension(), false);
  for (Index i = 1; i <= found.solutions.dimension(); ++i)
    status.solutionTimes[i] = found.solutions[i].time;
  return starsift::statusText(status);
}

}  // namespace starsift

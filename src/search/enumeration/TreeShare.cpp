#include "search/enumeration/TreeShare.h"

#include <algorithm>
#include <cmath>

namespace starsift {

namespace {

/// Coefficients further away from the current one are left out.
constexpr double reach = 50;

/// Parts of the children of a node, by their weights.
struct Parts {
  double done;
  double current;
};

Parts partsOf(const LevelChoices& choices) {
  double all = 0;
  double done = 0;
  const double first = std::max(choices.least, -reach);
  const int steps = static_cast<int>(std::min(choices.most, reach) - first);
  for (int step = 0; step <= steps; ++step) {
    const double c = first + step;
    const double weight = subtreeWeight(choices, c);
    all += weight;
    if (c > choices.doneAbove && c < choices.doneBelow && c != 0) done += weight;
  }
  if (!(all > 0)) return {0, 1};
  return {done / all, subtreeWeight(choices, 0) / all};
}

}  // namespace

double subtreeWeight(const LevelChoices& choices, double coefficient) {
  const double distance = choices.position + coefficient;
  const double room = 1 - distance * distance * choices.curvature;
  return room > 0 ? std::pow(room, static_cast<double>(choices.levelsBelow) / 2) : 0.0;
}

double shareDone(const std::vector<LevelChoices>& path) {
  double done = 0;
  double current = 1;
  for (const LevelChoices& choices : path) {
    const Parts parts = partsOf(choices);
    done += current * parts.done;
    current *= parts.current;
  }
  return std::min(done, 1.0);
}

}  // namespace starsift

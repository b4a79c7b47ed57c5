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
  /// Open choices on both sides.
  double above;
  double below;
};

Parts partsOf(const LevelChoices& choices) {
  double all = 0;
  double done = 0;
  double above = 0;
  double below = 0;
  const double first = std::max(choices.least, -reach);
  const int steps = static_cast<int>(std::min(choices.most, reach) - first);
  for (int step = 0; step <= steps; ++step) {
    const double c = first + step;
    const double weight = subtreeWeight(choices, c);
    all += weight;
    if (c == 0) continue;
    if (c <= choices.doneAbove)
      below += weight;
    else if (c >= choices.doneBelow)
      above += weight;
    else
      done += weight;
  }
  if (!(all > 0)) return {0, 1, 0, 0};
  return {done / all, subtreeWeight(choices, 0) / all, above / all, below / all};
}

/// The open choices of a node on one side, `part` of its subtree: all of them, or the outer half
/// of those inside the radius.
std::optional<OpenChoices> openSide(const LevelChoices& choices, bool isUp, double part,
                                    bool isOnlySide) {
  const double sign = isUp ? 1 : -1;
  const double first =
      isUp ? std::max(choices.doneBelow, choices.least) : std::min(choices.doneAbove, choices.most);
  const double end = isUp ? choices.most : choices.least;
  if (std::isinf(first) || sign * first > sign * end) return std::nullopt;
  if (!isOnlySide) return OpenChoices{0, isUp, first, part};
  const double half = 1 / std::sqrt(choices.curvature);
  const double last = std::min(sign * end, std::floor(half - sign * choices.position));
  const double middle = std::ceil((sign * first + last) / 2);
  // Nothing inside the radius, or one choice.
  if (!(middle > sign * first)) return OpenChoices{0, isUp, first, part};
  return OpenChoices{0, isUp, sign * middle, part / 2};
}

/// The larger side of a node.
std::optional<OpenChoices> openPart(const LevelChoices& choices, const Parts& parts) {
  const bool hasAbove = openSide(choices, true, parts.above, false).has_value();
  const bool hasBelow = openSide(choices, false, parts.below, false).has_value();
  const bool isUp = hasAbove && (!hasBelow || parts.above >= parts.below);
  return openSide(choices, isUp, isUp ? parts.above : parts.below, !(hasAbove && hasBelow));
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

std::optional<OpenChoices> largestOpenChoices(const std::vector<LevelChoices>& path) {
  std::optional<OpenChoices> largest;
  double current = 1;
  for (std::size_t depth = 0; depth < path.size(); ++depth) {
    const Parts parts = partsOf(path[depth]);
    std::optional<OpenChoices> open = openPart(path[depth], parts);
    if (open) {
      open->depth = depth;
      open->share *= current;
      if (!largest || open->share > largest->share) largest = open;
    }
    current *= parts.current;
  }
  return largest;
}

}  // namespace starsift

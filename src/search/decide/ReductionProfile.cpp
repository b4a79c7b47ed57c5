#include "search/decide/ReductionProfile.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "search/enumeration/CosetDirections.h"
#include "search/enumeration/CosetReduction.h"

namespace starsift {

namespace {

constexpr Index blockGrowth = 10;

/// Blocks from this size on are enumerated with pruning.
constexpr Index prunedSize = 30;

ProfileCurve curveOf(std::string name, const BoxCoset& coset) {
  ProfileCurve curve{std::move(name), {}};
  const double digitsPerBit = std::log10(2.0);
  for (const BigFloat& square : cosetDirections(coset).squaredLengths)
    curve.lengths.push_back(square.log2() / 2 * digitsPerBit);
  return curve;
}

}  // namespace

std::vector<ProfileCurve> reductionProfile(BoxCoset coset, Index largestBlock,
                                           const std::function<bool()>& mayGoOn) {
  std::vector<ProfileCurve> curves{curveOf("before", coset)};
  if (!reduceBasis(coset, mayGoOn)) return curves;
  curves.push_back(curveOf("LLL", coset));
  const Index largest = std::min(largestBlock, static_cast<Index>(coset.basis.size()));
  Index size = 0;
  while (size < largest && largest > 2) {
    size = std::min(size + blockGrowth, largest);
    BlockSettings settings;
    if (size >= prunedSize) settings.pruning = BlockPruning::linear;
    if (!reduceBlocks(coset, size, settings, mayGoOn)) return curves;
  }
  if (size > 0) curves.push_back(curveOf("blocks of " + std::to_string(size), coset));
  return curves;
}

}  // namespace starsift

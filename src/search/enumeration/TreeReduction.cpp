#include "search/enumeration/TreeReduction.h"

#include <array>
#include <cstdint>
#include <utility>

#include "search/enumeration/CosetReduction.h"
#include "search/enumeration/TreeEstimate.h"

namespace starsift {

namespace {

/// A block reduction and the trees that it is worth its time for, in nodes expected by the Gaussian
/// heuristic, which are about a hundred times the nodes walked.
struct Stage {
  Index size;
  BlockPruning pruning;
  double fewestNodes;
  double mostNodes;
};

/// Trees above this aren't walked whatever the reduction, as a stage makes them ten times smaller
/// at best.
constexpr double hopelessNodes = 1e16;

/// Small blocks take some tenths of a second even then. They make bases of such trees orthogonal
/// enough for a brief walk in floating point, where one over rationals sees nothing.
constexpr double mostForSmallBlocks = 1e24;

/// Trees of 10^8 expected nodes take some tenths of a second, like the first three stages together
/// at 60 rows; those of 10^11 take minutes, like the last stage seconds.
constexpr std::array stages = {Stage{10, BlockPruning::complete, 1e8, mostForSmallBlocks},
                               Stage{20, BlockPruning::complete, 1e8, mostForSmallBlocks},
                               Stage{30, BlockPruning::linear, 1e8, hopelessNodes},
                               Stage{40, BlockPruning::linear, 1e10, hopelessNodes},
                               Stage{50, BlockPruning::linear, 1e11, hopelessNodes}};

/// Seconds of all enumerations of a stage.
constexpr BlockSettings::Seconds stageTime{10};

/// Steps of a stage without such a limit, each of some thousand nodes at most.
constexpr std::uint64_t stageSteps = 50'000;

/// False as reduceBlocks(), or if the steps did not suffice; the coset is as before then, as the
/// next stage needs a reduced basis.
bool runStage(const Stage& stage, BoxCoset& coset, StageLimit limit,
              const std::function<bool()>& mayGoOn) {
  BlockSettings settings;
  settings.pruning = stage.pruning;
  if (limit == StageLimit::time) {
    settings.totalTime = stageTime;
    return reduceBlocks(coset, stage.size, settings, mayGoOn);
  }
  const BoxCoset before = coset;
  std::uint64_t steps = 0;
  const bool isReduced = reduceBlocks(coset, stage.size, settings, [&steps, &mayGoOn] {
    return ++steps <= stageSteps && mayGoOn();
  });
  if (!isReduced) coset = before;
  return isReduced;
}

}  // namespace

std::optional<CosetDirections> reduceForTree(BoxCoset& coset, StageLimit limit,
                                             const std::function<bool()>& mayGoOn) {
  reduceBasis(coset, mayGoOn);
  if (!mayGoOn()) return std::nullopt;
  std::optional<CosetDirections> data = cosetDirections(coset, mayGoOn);
  if (!data) return std::nullopt;
  movePointToMiddle(coset, *data);
  double fewest = gaussianNodes(coset, *data);
  BoxCoset next = coset;
  for (const Stage& stage : stages) {
    if (fewest < stage.fewestNodes || fewest > stage.mostNodes) break;
    const bool isReduced = runStage(stage, next, limit, mayGoOn);
    if (!mayGoOn()) return std::nullopt;
    if (!isReduced) continue;
    std::optional<CosetDirections> nextData = cosetDirections(next, mayGoOn);
    if (!nextData) return std::nullopt;
    movePointToMiddle(next, *nextData);
    const double nodes = gaussianNodes(next, *nextData);
    // Blocks shorten the first rows, and may lose what deep insertions have gained at the others.
    if (nodes >= fewest) continue;
    fewest = nodes;
    coset = next;
    data = std::move(nextData);
  }
  return data;
}

}  // namespace starsift

#include "search/enumeration/TreeReduction.h"

#include <array>

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
};

/// Trees of 10^8 expected nodes take some tenths of a second, like the first three stages together
/// at 60 rows; those of 10^11 take minutes, like the last stage seconds.
constexpr std::array stages = {
    Stage{10, BlockPruning::complete, 1e8}, Stage{20, BlockPruning::complete, 1e8},
    Stage{30, BlockPruning::linear, 1e8}, Stage{40, BlockPruning::linear, 1e10},
    Stage{50, BlockPruning::linear, 1e11}};

/// Trees above this aren't walked whatever the reduction, as a stage makes them ten times smaller
/// at best.
constexpr double hopelessNodes = 1e16;

/// Seconds of all enumerations of a stage.
constexpr BlockSettings::Seconds stageTime{10};

}  // namespace

CosetDirections reduceForTree(BoxCoset& coset, const std::function<bool()>& mayGoOn) {
  reduceBasis(coset, mayGoOn);
  CosetDirections data = cosetDirections(coset);
  movePointToMiddle(coset, data);
  for (const Stage& stage : stages) {
    const double nodes = gaussianNodes(coset, data);
    if (nodes < stage.fewestNodes || nodes > hopelessNodes || !mayGoOn()) break;
    BlockSettings settings;
    settings.pruning = stage.pruning;
    settings.totalTime = stageTime;
    reduceBlocks(coset, stage.size, settings, mayGoOn);
    data = cosetDirections(coset);
    movePointToMiddle(coset, data);
  }
  return data;
}

}  // namespace starsift

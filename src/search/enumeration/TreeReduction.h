// The reduction of a coset whose complete tree is to be walked.
#pragma once

#include <functional>
#include <optional>

#include "search/enumeration/BoxCoset.h"
#include "search/enumeration/CosetDirections.h"

namespace starsift {

/// What ends a stage of the reduction early.
enum class StageLimit {
  /// Some seconds.
  time,
  /// Steps, about as many as a fast machine makes in that time: the basis is the same on every run.
  steps
};

/// reduceCoset(), then block reduction while the expected tree is large: in blocks of 10 to 50
/// rows, each size if the tree would take longer than that, and the best of these bases is kept.
/// Where trees are hopeless there are small blocks only, or none. The coset stays the same set.
/// Returns the data of the reduced coset, whose box isn't empty.
///
/// `mayGoOn` is called before every step; false ends the reduction, and nothing is returned then.
std::optional<CosetDirections> reduceForTree(BoxCoset& coset, StageLimit limit,
                                             const std::function<bool()>& mayGoOn);

}  // namespace starsift

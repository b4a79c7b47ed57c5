// The reduction of a coset whose complete tree is to be walked.
#pragma once

#include <functional>
#include <optional>

#include "search/enumeration/BoxCoset.h"
#include "search/enumeration/CosetDirections.h"

namespace starsift {

/// reduceCoset(), then block reduction while the expected tree is large: in blocks of 10 to 50
/// rows, each size if the tree would take longer than that, and the best of these bases is kept.
/// The coset stays the same set. Returns the data of the reduced coset, whose box isn't empty.
///
/// `mayGoOn` is called before every step; false ends the reduction, and nothing is returned then.
std::optional<CosetDirections> reduceForTree(BoxCoset& coset, const std::function<bool()>& mayGoOn);

}  // namespace starsift

// Cutting an enumeration tree into many subtrees, the same ones on every run.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "search/enumeration/EnumerationWalk.h"

namespace starsift {

/// As Enumeration::cut(); `walk` has not walked and isn't used for anything else. Breadth-first
/// from the root: which node is cut next depends on nothing but the number of its predecessors, as
/// estimated shares may round in another way on another machine. The subtrees have equal shares.
std::optional<std::vector<Subtree>> cutTree(EnumerationWalk& walk, std::size_t wanted,
                                            const std::function<bool()>& mayGoOn);

}  // namespace starsift

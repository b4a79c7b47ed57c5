// Which fatal reports answer the question of a search.
#pragma once

#include <string>
#include <string_view>

namespace starsift {

/// A line that says so under a report that proves that the problem has no solution; empty
/// for any other message. For setFailureRemark().
std::string proofRemark(std::string_view message);

}  // namespace starsift

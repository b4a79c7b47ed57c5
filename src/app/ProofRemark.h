// Which fatal reports answer the question of a search.
//
// A search takes equations exactly, while a stored solution satisfies them within a
// tolerance. So a report that depends on equations proves that there is no solution only
// if that makes no difference.
#pragma once

#include <string>
#include <string_view>

namespace starsift {

/// Says whether all points that satisfy the equations of the problem within the tolerance
/// satisfy them exactly (see Exactness.h); false at first.
void setEquationsExact(bool exact);

/// What a report proves, as a line under it; empty for a message that proves nothing. For
/// setFailureRemark().
std::string proofRemark(std::string_view message);

}  // namespace starsift

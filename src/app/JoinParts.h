// The job of starseek --join: what the parts of a search have found and proven together.
#pragma once

#include <iosfwd>

#include "lattice/YLattice.h"

namespace starsift {

/// Exit status if parts are missing or not complete.
constexpr int partsMissing = 2;

/// Joins the parts in the folder of the problem, FILE.part-I-of-K.state and their solutions,
/// which are checked and added to FILE.sol, and reports as a search does. Parts that are missing
/// are named, each with the command that makes it, unless what was wanted was found.
///
/// `lattice` is exact and has the paths of the problem. Returns the exit status. Fatal, before
/// anything is written: no part, parts of two numbers of parts, a file of another problem, version,
/// goal or tree than the others or with another name than its part, and a solution file that lacks
/// solutions that its part has found.
int joinPartFiles(YLattice<long double>& lattice, bool json, std::ostream& report);

}  // namespace starsift

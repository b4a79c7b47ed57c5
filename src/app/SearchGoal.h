// What a search looks for, by its parameters and options.
#pragma once

#include <string>

#include "app/DirectStars.h"
#include "app/SeekArguments.h"
#include "lattice/YLattice.h"
#include "search/decide/Decider.h"

namespace starsift {

/// A tnorm or snorm ends the search.
bool hasNormLimit(const YLattice<long double>& lattice);

/// What is looked for, and with which means: with targets the best solution, unless a number of
/// solutions is given without a norm to reach; else `sol` solutions, or all.
DeciderSettings deciderSettings(const YLattice<long double>& lattice, const SeekOptions& options);

/// A further solution would be of use beside the lattice: a better one with Aim::best, else the
/// only one that is looked for.
bool wantsFurther(const YLattice<long double>& lattice, const DirectStars& stars, bool wantsBest);

/// "best", "all", "count", or a number of solutions: TreeState::goal.
std::string goalOf(const DeciderSettings& settings, const SeekOptions& options);

}  // namespace starsift

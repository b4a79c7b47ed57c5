// The reductions that a command's complete search would make, as curves.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "app/SeekArguments.h"
#include "lattice/YLattice.h"
#include "search/decide/ReductionProfile.h"

namespace starsift {

/// The curves of reductionProfile() with blocks of `beta` rows for the complete search that
/// parameters and options ask for. The exact lattice is live and has the problem as read. Nothing
/// if that search has no lattice in a finite box, or if mayGoOn ends it before there is one.
std::optional<std::vector<ProfileCurve>> searchProfile(const YLattice<long double>& lattice,
                                                       const SeekOptions& options,
                                                       const std::function<bool()>& mayGoOn);

}  // namespace starsift

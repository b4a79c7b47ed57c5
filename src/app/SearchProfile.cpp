#include "app/SearchProfile.h"

#include "app/SearchGoal.h"
#include "search/decide/Decision.h"

namespace starsift {

std::optional<std::vector<ProfileCurve>> searchProfile(const YLattice<long double>& lattice,
                                                       const SeekOptions& options,
                                                       const std::function<bool()>& mayGoOn) {
  Decision decision(lattice.problemAsRead());
  const Aim aim = deciderSettings(lattice, options).aim;
  const std::optional<BoxCoset> coset = decision.unreducedCoset(aim, mayGoOn);
  if (!coset || coset->basis.empty()) return std::nullopt;
  return reductionProfile(*coset, lattice.params().beta, mayGoOn);
}

}  // namespace starsift

#include "search/SearchPass.h"

#include "search/NearbySearch.h"

namespace starsift {

PassCounts searchPass(YLattice<long double>& lattice) {
  return lattice.runStep([](auto& live) {
    live.reduce(0);
    NearbySearch(live).run();
    return live.run.lastPass;
  });
}

}  // namespace starsift

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

void searchBlocks(YLattice<long double>& lattice) {
  if (!lattice.params().eenum) return;
  lattice.runStep([](auto& live) {
    live.reduceBlocks();
    if (!live.stopped()) NearbySearch(live).run();
  });
}

}  // namespace starsift

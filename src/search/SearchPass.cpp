#include "search/SearchPass.h"

#include "search/NearbySearch.h"

namespace starsift {

namespace {

/// Rows by which blocks grow beyond the parameter beta: another lattice takes longer to make than
/// blocks of 40 rows take, and shows less.
constexpr Index furtherGrowth = 20;

}  // namespace

PassCounts searchPass(YLattice<long double>& lattice) {
  return lattice.runStep([](auto& live) {
    live.reduce(0);
    NearbySearch(live).run();
    return live.run.lastPass;
  });
}

void searchBlocks(YLattice<long double>& lattice) {
  const Params& params = lattice.params();
  if (!params.eenum || params.beta < 2) return;
  const Index largest = params.beta + furtherGrowth;
  lattice.runStep([largest](auto& live) {
    live.reduceBlocks(largest);
    if (!live.stopped()) NearbySearch(live).run();
  });
}

}  // namespace starsift

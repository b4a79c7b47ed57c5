#include "search/SearchPass.h"

#include <cstddef>

#include "search/Candidate.h"
#include "search/NearbySearch.h"
#include "search/PairVectors.h"
#include "search/ProjectedSieve.h"
#include "search/ReinsertBest.h"
#include "search/SampleVectors.h"
#include "search/SieveVectors.h"
#include "search/TrimLattice.h"

namespace starsift {

namespace {

/// Rows by which blocks grow beyond the parameter beta: another lattice takes longer to make than
/// blocks of 40 rows take, and shows less.
constexpr Index furtherGrowth = 20;

/// Rows of a lattice whose blocks are reduced before anything else.
constexpr Index fewestRowsFirst = 60;
constexpr Index mostRowsFirst = 130;

/// From now on the short vectors that the reduction meets are collected, if anything uses them.
template <class T, class R>
void openCollection(Lattice<T, R>& lattice) {
  const Params& params = lattice.params;
  const bool isUsed = params.pair || params.sieve || params.sample || params.reinsert;
  const std::size_t limit = isUsed && isSearched(lattice) ? params.collectLimit.get() : 0;
  lattice.found.shortVectors.open(limit, lattice.frame.firstChecked(lattice));
}

/// The searches beside a reduced basis.
template <class T, class R>
void searchBeside(Lattice<T, R>& lattice) {
  NearbySearch(lattice).run();
  if (!isSearched(lattice)) return;
  if (lattice.params.sample && !lattice.stopped()) sampleVectors(lattice);
  if (lattice.params.sieve && !lattice.stopped()) sieveVectors(lattice);
  if (lattice.params.pair && !lattice.stopped()) pairVectors(lattice);
}

}  // namespace

PassCounts searchPass(YLattice<long double>& lattice) {
  return lattice.runStep([](auto& live) {
    openCollection(live);
    live.reduce(0);
    if (live.params.reinsert && live.run.restarts > 0 && isSearched(live)) reinsertBest(live);
    searchBeside(live);
    return live.run.lastPass;
  });
}

void searchBlocks(YLattice<long double>& lattice) {
  const Params& params = lattice.params();
  if (!params.eenum || params.beta < 2) return;
  const Index largest = params.beta + furtherGrowth;
  lattice.runStep([largest](auto& live) {
    live.reduceBlocks(largest);
    if (!live.stopped()) searchBeside(live);
    if (!live.stopped() && isSearched(live)) sieveProjection(live);
  });
}

bool isWorthBlocksFirst(const YLattice<long double>& lattice) {
  const Index rows = lattice.withLive([](const auto& live) { return live.basis.n; });
  return !lattice.hasTargets() && lattice.params().sol > 0 && rows >= fewestRowsFirst &&
         rows <= mostRowsFirst;
}

void searchTrimmed(YLattice<long double>& lattice) {
  const Params& params = lattice.params();
  if (!params.scale && !params.translate) return;
  lattice.runStep([](auto& live) {
    if (isSearched(live)) trimLattice(live);
  });
}

void makeNextLattice(YLattice<long double>& lattice) {
  try {
    lattice.restartHandling(Outcome::unfinished);
  } catch (const RestartException&) {
    // There is a new lattice, which may be simpler than the one before.
    lattice.tryStandardPrecision();
  }
}

}  // namespace starsift

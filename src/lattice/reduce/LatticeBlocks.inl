// Lattice: block reduction of its basis, by BlockReduction. The rows that it changes are checked as
// vectors.
#pragma once

#include <algorithm>
#include <array>

#include "lattice/Lattice.h"
#include "lattice/reduce/BlockReduction.h"
#include "lattice/reduce/LatticeLll.inl"

namespace starsift {

namespace latticeblocks {

/// Blocks grow by so many rows: a basis that is reduced in small blocks takes less time in larger
/// ones.
constexpr Index growth = 10;

/// The parameters of enumeration; a time of 0 or less is none.
template <class T, class R>
BlockSettings settingsOf(const Lattice<T, R>& lattice) {
  constexpr std::array prunings = {BlockPruning::complete, BlockPruning::linear,
                                   BlockPruning::strong, BlockPruning::extreme};
  const auto& params = lattice.params;
  BlockSettings settings;
  settings.pruning = prunings[static_cast<std::size_t>(
      std::clamp<long>(params.eprune, 0, static_cast<long>(prunings.size()) - 1))];
  settings.deep = params.deep;
  if (params.btime > 0) settings.blockTime = BlockSettings::Seconds(params.btime);
  if (params.etime > 0) settings.totalTime = BlockSettings::Seconds(params.etime);
  return settings;
}

/// Number of rows before the first one that is 0 or depends on those before it, after reduce().
template <class T, class R>
Index independentCount(const Basis<T, R>& basis) {
  Index count = 0;
  while (count < basis.n && basis.vecStatus[count + 1] != ST_DEPENDENT &&
         !(supNorm(basis.B()[count + 1]) == T()))
    ++count;
  return count;
}

}  // namespace latticeblocks

template <class T, class R>
bool Lattice<T, R>::reduceBlocks(Index largest) {
  const Index count = latticeblocks::independentCount(basis);
  latticelll::RowChecker<T, R> checker(*this);
  LllReduction<T, R> lll(basis, gramSchmidt, checker, {});
  BlockReduction<T, R> blocks(basis, gramSchmidt, checker, lll, latticeblocks::settingsOf(*this));
  BlockEnd end = BlockEnd::reduced;
  Index size = 0;
  while (size < largest && end == BlockEnd::reduced) {
    size = std::min(size + latticeblocks::growth, largest);
    end = blocks.run(count, size);
  }
  run.deepInsertions += lll.deepInsertions();
  if (searchIsOver()) return false;
  return reduce(0) && end == BlockEnd::reduced;
}

}  // namespace starsift

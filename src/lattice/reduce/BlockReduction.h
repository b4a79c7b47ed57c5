// Block reduction of the rows of a basis: each row becomes a shortest vector, or one that pruned
// enumeration finds, of the block that begins with it, projected orthogonally to the rows before.
// It is independent of problems, solutions, files and signals.
//
// C. P. Schnorr, M. Euchner, Math. Programming 66 (1994); Y. Chen, P. Q. Nguyen, ASIACRYPT 2011.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "algorithms/reduction/BlockEnumeration.h"
#include "lattice/reduce/LllReduction.h"

namespace starsift {

/// Parameters of the reduction.
struct BlockSettings {
  using Seconds = std::chrono::duration<double>;

  BlockPruning pruning = BlockPruning::complete;
  /// A vector replaces the first one of its block if its squared length is less than this part of
  /// it, 1/4 < delta < 1.
  double delta = 0.99;
  /// A vector that was inserted moves on to the first row, from the second one on, that is longer
  /// in the same way.
  bool deep = false;
  /// Time of one enumeration and of all of them together; none: no limit.
  std::optional<Seconds> blockTime;
  std::optional<Seconds> totalTime;
};

enum class BlockEnd {
  /// A tour over all blocks changed nothing, or the last ones gained next to nothing.
  reduced,
  /// The time of all enumerations is over.
  time,
  /// The visitor ended it, or rounding errors did; the rows need not be reduced.
  stopped
};

/// Block reduction of a basis and its Gram-Schmidt data, by the row operations of LllReduction.
template <class T, class R>
class BlockReduction {
 public:
  /// `lll`, a reduction of this basis by these data without deep insertions, which calls this
  /// visitor, and the others must live as long as this object. The visitor is called within
  /// enumerations too, every some thousand nodes.
  BlockReduction(Basis<T, R>& basis, GramSchmidtData<R>& data, RowVisitor& visitor,
                 LllReduction<T, R>& lll, const BlockSettings& settings)
      : basis_(basis), data_(data), visitor_(visitor), lll_(lll), settings_(settings) {}

  /// Makes tours over the blocks of `size` rows, at least 2, of rows 1..count, which are
  /// independent; the rows after them stay. The rows span the same lattice. Throws as
  /// LllReduction::pass(), and what the visitor throws; the rows span their lattice then. May be
  /// called again with another size: the limits of time are those of all calls.
  BlockEnd run(Index count, Index size);

  /// Vectors that were inserted.
  std::uint64_t insertions() const { return insertions_; }
  std::uint64_t nodes() const { return nodes_; }

 private:
  using Clock = std::chrono::steady_clock;

  /// One tour; sets hasChanged_. Empty: it came to its end.
  std::optional<BlockEnd> tour(Index count, Index size);
  /// LLL reduction of rows 1..to; false if it didn't come to its end.
  bool reduceRows(Index to);
  /// Inserts a short vector of the rows first..last before them, if one is found.
  void improve(Index first, Index last);
  ProjectedBlock blockOf(Index first, Index last) const;
  BlockSearch searchIn(const ProjectedBlock& block);
  /// Neither a limit of time nor the visitor has ended the present enumeration.
  bool mayEnumerate(Clock::time_point start);
  bool isTimeOver() const;
  /// Slope of a line through the logarithms of the orthogonal lengths.
  double slope(Index count) const;

  Basis<T, R>& basis_;
  GramSchmidtData<R>& data_;
  RowVisitor& visitor_;
  LllReduction<T, R>& lll_;
  BlockSettings settings_;
  BlockSettings::Seconds spent_{};
  Index testsSinceRenewal_ = 0;
  bool hasChanged_ = false;
  bool isStopped_ = false;
  std::uint64_t insertions_ = 0;
  std::uint64_t nodes_ = 0;
};

extern template class BlockReduction<long double, long double>;

}  // namespace starsift

// Short vectors of a projected lattice by enumeration, in double.
//
// What is found is a combination of rows with integer coefficients. Whether it is as short as
// rounding makes it seem is for the caller to see.
//
// C. P. Schnorr, M. Euchner, Math. Programming 66 (1994); N. Gama, P. Q. Nguyen, O. Regev,
// EUROCRYPT 2010, for pruning and for the order in which sums are kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace starsift {

/// Rows 1..d of a basis, d >= 1, projected orthogonally to the rows before them.
struct ProjectedBlock {
  /// Gram-Schmidt coefficients: mu[i][k] of row i with respect to row k for k < i; 0-based.
  std::vector<std::vector<double>> mu;
  /// Squared lengths of the Gram-Schmidt vectors, d entries, finite and positive.
  std::vector<double> lengths;

  std::size_t dimension() const { return lengths.size(); }
};

/// A vector of a projected lattice.
struct BlockVector {
  /// d integers, not all 0, the last one of them that isn't 0 positive.
  std::vector<double> coefficients;
  double squaredLength = 0;
};

/// How much of a tree is walked.
enum class BlockPruning {
  /// All of it: what is found is the shortest vector, up to rounding.
  complete,
  /// The bound grows in proportion to the choices made.
  linear,
  /// Less and less than that.
  strong,
  extreme
};

/// The bound of a node over the bound of the whole vector after each of d choices: d numbers in
/// (0, 1], ascending, the last one 1.
std::vector<double> pruningBounds(BlockPruning pruning, std::size_t d);

struct BlockSearch {
  /// Squared length that a vector must stay below.
  double bound = 0;
  BlockPruning pruning = BlockPruning::complete;
  /// Called every thousand nodes; false ends the enumeration with the best vector so far. Empty:
  /// never.
  std::function<bool()> mayGoOn;
};

struct BlockResult {
  /// The shortest vector found, none if there is none below the bound.
  std::optional<BlockVector> shortest;
  std::uint64_t nodes = 0;
};

/// The shortest vector of the projected lattice, other than 0, in the walked part of the tree.
BlockResult enumerateBlock(const ProjectedBlock& block, const BlockSearch& search);

}  // namespace starsift

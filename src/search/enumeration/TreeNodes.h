// The state of one walk in an enumeration tree, and its steps between nodes.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "search/enumeration/CoefficientProgram.h"
#include "search/enumeration/TreeGeometry.h"
#include "search/enumeration/TreeShare.h"

namespace starsift {

/// The path from the root to a node, with the intervals of the coefficients on it.
///
/// The node at level k has chosen coefficients d-1 ... k. Its children are made by enter(k - 1),
/// then advance(k - 1) for each child that survives, nearest to the centre first. A child is cut,
/// with all that lie further out on its side, if a proof shows that no point of the box is there:
/// by length, or by Hölder's inequality for the projected vector. Intervals come from the bounds of
/// all coefficients, from final coordinates, and where they stay wide from a linear program.
///
/// C. P. Schnorr, M. Euchner, Math. Programming 66 (1994); H. Ritter, Aufzaehlung von kurzen
/// Gittervektoren in allgemeiner Norm, thesis, Frankfurt (1997); A. Wassermann, Attacking the
/// market split problem with lattice point enumeration, J. Comb. Optim. 6 (2002).
template <class Real>
class TreeNodes {
 public:
  /// At the root, with the whole box. The geometry must live as long as this object.
  explicit TreeNodes(const TreeGeometry<Real>& geometry);

  const TreeGeometry<Real>& geometry() const { return geometry_; }

  /// Replaces the bounds of a coordinate, relative to the middle of the box and inside the former
  /// bounds.
  void setBounds(std::size_t j, Real lower, Real upper);
  /// Sets the radii of all levels: of EnumerationSettings::pruning, or the full radius.
  void setPruning(const std::optional<double>& pruning);
  /// A cut was made by a pruned radius that the full one wouldn't have made.
  bool hasPruned() const { return hasPruned_; }

  /// The bounds alone show that the tree has no solution.
  bool isRootCut();
  /// Starts the children of the current node: finds the interval of coefficient k.
  void enter(std::size_t k);
  /// Chooses the next coefficient k that isn't cut; false if there is none. A level k > 0.
  bool advance(std::size_t k);
  /// Moves to the child chosen at level k > 0, so that enter(k - 1) can follow.
  void descend(std::size_t k);
  /// descend(k) and enter(k - 1) after advance(k). A child that linear programs leave no choice is
  /// cut after all, in small dimensions, where each child has one until they have taken some time;
  /// elsewhere a node stays a measure of work.
  void enterChild(std::size_t k);
  /// Chooses a coefficient that advance(k) has returned before.
  void choose(std::size_t k, Real coefficient);
  /// At the root: chooses the coefficients of the last rows, fewer than d, without tests. Nothing
  /// else of the tree is left then. The children of that node are started by enter() or
  /// enterBetween().
  void startBelow(const std::vector<Real>& path);
  /// Starts the children of the current node in an interval.
  void enterBetween(std::size_t k, Real least, Real most);
  /// Takes the choices of level k > 0 from `first` on away from this walk, all up or all down;
  /// `first` is relative to the chosen one. Returns the least and the greatest of them.
  std::pair<Real, Real> handOver(std::size_t k, bool isUp, double first);
  /// Takes over the bounds of another walk over the same geometry, which are inside of these.
  void narrowTo(const TreeNodes& other);
  /// Repeats the tests of the path from the root to level k >= 1 after a change of bounds. Returns
  /// the level of the first node that is cut, k - 1 if none is; then intervals are narrowed too.
  std::size_t recheck(std::size_t k);

  /// Interval of coefficient k as found by enter(k); for k = 0 it holds exactly the solutions
  /// of this node, unless bounds have changed since.
  Real least(std::size_t k) const { return levels_[k].least; }
  Real most(std::size_t k) const { return levels_[k].most; }
  /// Last coefficient chosen at level k.
  Real chosen(std::size_t k) const { return levels_[k].chosen; }
  /// Coordinate j of the point of the node that enter(k) was called at, relative to the middle.
  Real coordinate(std::size_t k, std::size_t j) const { return points_.at(k + 1, j); }
  Real lower(std::size_t j) const { return lower_.at(0, j); }
  Real upper(std::size_t j) const { return upper_.at(0, j); }
  /// Children that weren't cut, of all levels k > 0, so far.
  std::uint64_t nodes() const { return nodes_; }
  /// Nodes whose interval was found by linear programs, so far.
  std::size_t programs() const { return programs_; }
  /// The choices of level k at the node that enter(k) was called at; after advance(k) or choose().
  LevelChoices choicesAt(std::size_t k) const;

 private:
  struct Level {
    /// Squared length of the projected vector before the choice at this level.
    Real length;
    /// The choice c gives the Gram-Schmidt coefficient c + offset.
    Real offset;
    Real least;
    Real most;
    /// Next choices on both sides; beyond the interval if the side is done.
    Real up;
    Real down;
    Real chosen;
  };

  Real support(std::size_t row);
  Real step(std::size_t k, Real factor);
  void updateRadius();
  void applyFinals(std::size_t k, Real& least, Real& most) const;
  void applyProgram(std::size_t k, Level& level);
  /// Narrow intervals are worth a linear program too.
  bool isEager() const;
  bool isWide(std::size_t k, const Level& level) const;
  /// The choices of level k start at the centre.
  void start(Level& level) const;
  /// Next choice nearest to the centre; false if both sides are done.
  bool pick(Level& level, Real& coefficient, bool& isUp) const;

  const TreeGeometry<Real>& geometry_;
  /// Bounds relative to the middle, one row each.
  BlockRows<Real> lower_;
  BlockRows<Real> upper_;
  /// The bounds are those of the geometry, symmetric to 0.
  bool isWholeBox_ = true;
  /// Radius of the box, and radius of each level with its slack.
  Real fullRadius_ = 0;
  std::vector<Real> radii_;
  std::optional<double> pruning_;
  bool hasPruned_ = false;
  /// Row k: vector after the choice at level k, row d before any choice. Projected vectors as
  /// directions, and points.
  BlockRows<Real> vectors_;
  BlockRows<Real> points_;
  std::vector<Level> levels_;
  std::uint64_t nodes_ = 0;
  /// Nodes whose interval was found by linear programs.
  std::size_t programs_ = 0;
  /// Two per level, made on first use.
  std::vector<std::unique_ptr<CoefficientProgram<Real>>> greatest_;
  std::vector<std::unique_ptr<CoefficientProgram<Real>>> smallest_;
};

}  // namespace starsift

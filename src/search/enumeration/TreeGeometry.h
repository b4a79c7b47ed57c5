// The data of an enumeration tree in floating point, with proven bounds of their errors.
#pragma once

#include <functional>
#include <optional>

#include "search/enumeration/Blocks.h"
#include "search/enumeration/BoxCoset.h"
#include "search/enumeration/CosetDirections.h"

namespace starsift {

/// A coordinate that no row before the one of its level changes.
template <class Real>
struct FinalCoordinate {
  std::size_t coordinate;
  /// Entry of the row at this coordinate, not 0.
  Real step;
};

/// What is added to the bounds of a tree before a comparison. Each is at least the proven error
/// of the comparison, docs/enumeration.md, so that no solution is cut off.
template <class Real>
struct CutSlacks {
  /// Of the squared length against the squared radius.
  Real length = 0;
  /// Of the squared length against Hölder's bound.
  Real hoelder = 0;
  /// Of the bound of a coefficient from its linear program, beside the error of the program
  /// itself.
  Real program = 0;
};

/// The tree of a coset x = p + c_1 b_1 + ... + c_d b_d in a box. All points are relative to the
/// middle m of the box, x - m, whose entries are multiples of 1/2. Level k, 0 <= k < d, chooses
/// the coefficient of row k; the root chooses row d - 1.
///
/// Everything on integers (rows, start, half ranges, final coordinates, and each sum of rows
/// that a walk can reach) is exact in Real.
template <class Real>
struct TreeGeometry {
  /// d and n.
  std::size_t dimension = 0;
  std::size_t coordinates = 0;
  /// b_k, d rows.
  BlockRows<Real> rows;
  /// v_k of CosetDirections, rounded, d rows.
  BlockRows<Real> directions;
  /// v_k / |b*_k|^2, d rows: the product with a point is the coefficient of b*_k in it.
  BlockRows<Real> centres;
  /// p - m, one row.
  BlockRows<Real> start;
  /// Direction of the part of the start orthogonal to all rows, one row.
  BlockRows<Real> rest;
  /// Half of the range of each coordinate, one row.
  BlockRows<Real> halfRanges;
  /// Square of the scale of each coordinate, n entries.
  std::vector<Real> weights;
  /// <v_k, b_k>, about |b*_k|^2, d entries.
  std::vector<Real> squaredLengths;
  /// <rest, start>, a squared length as well.
  Real restLength = 0;
  /// Least and greatest coefficient of each row over the points of the coset in the box, d entries
  /// each, integers of magnitude below 2^(digits - 3).
  std::vector<Real> least;
  std::vector<Real> most;
  /// Bounds of the magnitudes of the coefficients, d entries.
  std::vector<double> magnitudes;
  /// The final coordinates of each level, d entries.
  std::vector<std::vector<FinalCoordinate<Real>>> finals;
  /// Coordinates that no row changes.
  std::vector<std::size_t> constants;
  CutSlacks<Real> slacks;
};

/// The geometry of the tree of a coset whose box isn't empty, or none if Real can't hold the
/// numbers or the error bounds aren't small. O(d^2 n) operations on integers of a few words,
/// seconds for some hundred rows: `mayGoOn` is called before every row; false ends the work, and
/// nothing is returned then.
template <class Real>
std::optional<TreeGeometry<Real>> treeGeometry(
    const BoxCoset& coset, const CosetDirections& data,
    const std::function<bool()>& mayGoOn = [] { return true; });

}  // namespace starsift

// The range of one coefficient over a box, by a small linear program.
#pragma once

#include <cstddef>
#include <vector>

#include "search/enumeration/TreeGeometry.h"

namespace starsift {

/// The linear program: the greatest c_k, or the least, of real c_0 ... c_k such that
/// y + c_0 b_0 + ... + c_k b_k lies in the box.
///
/// A dual simplex method with bounded variables on a dense tableau in double. Each of its bases
/// gives a direction v, 0 outside of k + 1 coordinates, with <v, b_i> = 0 for i < k and
/// <v, b_k> = 1, and with it a bound of c_k. The method may stop at any basis and its tableau
/// may be inexact, as the bound is computed from v with its errors. The last basis is kept: it
/// is a good start for the next y.
///
/// The step along an edge passes bounds while the dual objective improves: R. Fourer, Notes on the
/// dual simplex method, Northwestern University (1994).
template <class Real>
class CoefficientProgram {
 public:
  enum class Sense { greatest, least };

  /// For level k of a geometry that lives as long as this object.
  CoefficientProgram(const TreeGeometry<Real>& geometry, std::size_t k, Sense sense);

  /// A proven upper bound of c_k, or of -c_k for Sense::least; at most `known`, which is a bound
  /// already. Below `needed` it means that there is no such point, or none of interest. The
  /// arguments are rows over the coordinates.
  Real bound(const Block<Real>* lower, const Block<Real>* upper, const Block<Real>* y, Real known,
             Real needed);

 private:
  /// Chooses the first basis by elimination; false if the rows seem dependent.
  bool factorise();
  /// Makes `column` basic in `row` of the tableau.
  void pivot(std::size_t row, std::size_t column);
  /// Deviations of the coordinates outside of the basis from y, at the bounds that the signs of
  /// the objective choose; sets the coordinates of the point and the objective.
  void evaluate();
  struct Violation {
    std::size_t column;
    /// Scaled amount; 0 if the point lies in the box.
    double amount;
    /// Above the upper bound.
    bool isAbove;
  };
  Violation greatestViolation() const;
  /// The row that leaves the tableau for a violated column, or all rows if none does; `step` is
  /// the length of the dual step.
  std::size_t leavingRow(const Violation& violation, double& step);
  /// The bound that v proves.
  Real prove(const Block<Real>* lower, const Block<Real>* upper, const Block<Real>* y) const;

  const TreeGeometry<Real>& geometry_;
  std::size_t k_;
  double sign_;
  /// Rows of the tableau, k + 1, and coordinates, n; column n is the objective.
  std::size_t size_;
  std::size_t columns_;
  std::vector<double> tableau_;
  /// Coordinate of each row of the tableau.
  std::vector<std::size_t> basis_;
  std::vector<bool> isInBasis_;
  bool isUsable_ = false;
  std::size_t pivots_ = 0;
  /// Scale per coordinate, about 1 over its range.
  std::vector<double> scale_;
  // Of the current y, scaled: bounds minus y, and the point minus y.
  std::vector<double> lower_;
  std::vector<double> upper_;
  std::vector<double> point_;
  /// The bound of the basis, without errors.
  double objective_ = 0;
  /// v, a value per row of the tableau, and one for a column that isn't in the basis.
  std::vector<Real> direction_;
  Real extraDirection_ = 0;
  std::size_t extraColumn_ = 0;

  struct Break {
    double step;
    double slope;
    std::size_t row;
  };
  std::vector<Break> breaks_;
};

}  // namespace starsift

// Linear programs in rationals: nothing is rounded, so that a bound, a contradiction or an
// unbounded direction is proven.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "numbers/QQ.h"

namespace starsift {

enum class SimplexEnd {
  /// minimise(): value() of the row is the least one. makeFeasible(): there is a point.
  reached,
  /// There is no point.
  infeasible,
  /// The row decreases without end along ray().
  unbounded,
  /// mayGoOn() ended it, or there were too many steps.
  stopped
};

/// Values of rows, linear in some free variables, each within bounds.
///
/// The simplex method for variables with two bounds, on a full tableau, by Bland's rule, which
/// doesn't cycle: B. Dutertre, L. de Moura, CAV 2006; R. G. Bland, Math. Oper. Res. 2 (1977). Each
/// step takes O(rows * variables) operations on rationals.
class ExactSimplex {
 public:
  using MayGoOn = std::function<bool()>;

  struct Row {
    /// One per variable.
    std::vector<QQ> coefficients;
    /// Of the product of coefficients and variables; without one that side is free.
    std::optional<QQ> lower;
    std::optional<QQ> upper;
  };

  /// mayGoOn() is called before each step.
  ExactSimplex(std::size_t variables, const std::vector<Row>& rows, MayGoOn mayGoOn);

  /// Finds a point within all bounds.
  SimplexEnd makeFeasible();
  /// Moves to a point at which `sign` times row i, 0-based, is least; sign is 1 or -1. Only after
  /// makeFeasible() has reached a point.
  SimplexEnd minimise(std::size_t row, int sign);

  /// Of row i at the present point.
  const QQ& value(std::size_t row) const { return values_[variables_ + row]; }
  /// After unbounded: what a step along the direction adds to each row.
  const std::vector<QQ>& ray() const { return ray_; }

 private:
  /// What a move of a nonbasic variable meets first.
  struct Block {
    /// Length of the move; none: no bound is met.
    std::optional<QQ> length;
    /// Tableau row of the basic variable that meets its bound; none: the variable its own other
    /// one.
    std::optional<std::size_t> row;
  };

  bool step();
  const QQ& entry(std::size_t row, std::size_t column) const { return tableau_[row][column]; }
  bool canRise(std::size_t variable) const;
  bool canFall(std::size_t variable) const;
  /// Tableau row whose basic variable lies outside its bounds, the one with the least number.
  std::optional<std::size_t> violatedRow() const;
  std::optional<std::size_t> columnThatRaises(const std::vector<QQ>& row, int sign) const;
  /// The change of each nonbasic variable per unit, as entries of a row.
  std::vector<QQ> costs(std::size_t variable) const;
  Block blockOf(std::size_t column, int direction) const;
  /// Adds `length` to a nonbasic variable.
  void move(std::size_t column, const QQ& length);
  void pivot(std::size_t row, std::size_t column);
  void storeRay(std::size_t column, int direction);

  std::size_t variables_;
  MayGoOn mayGoOn_;
  /// basic_[i] = sum over k of tableau_[i][k] * nonbasic_[k]. Numbers below variables_ are the
  /// variables, those from there on the rows.
  std::vector<std::vector<QQ>> tableau_;
  std::vector<std::size_t> basic_;
  std::vector<std::size_t> nonbasic_;
  /// Of variables and rows.
  std::vector<std::optional<QQ>> lower_;
  std::vector<std::optional<QQ>> upper_;
  std::vector<QQ> values_;
  std::vector<QQ> ray_;
  std::size_t steps_ = 0;
};

}  // namespace starsift

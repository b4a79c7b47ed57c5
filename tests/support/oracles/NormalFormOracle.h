// What the normal form of a problem must be, worked out over GMP's rationals: which
// points solve the problem and which the normal form, how one becomes the other, and
// what a record in normal form looks like.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/oracles/PlainRecord.h"

namespace starsift::oracle {

/// The smallest and the largest value of a variable of the problem, in its steps of
/// 10^-decimals: nothing on a side that is free. A variable whose bounds are equal is a
/// constant, wherever they are.
struct Range {
  std::optional<mpq_class> least;
  std::optional<mpq_class> greatest;
  /// Distance of two values.
  mpq_class step;
  /// There is no value.
  bool empty = false;
  /// There is exactly one value.
  bool single = false;
  /// It is given, on the steps or not.
  bool constant = false;
};

Range rangeOf(const Problem& problem, std::size_t variable);

/// The point is a solution of the problem as it was read: within bounds, in steps, with
/// equations, congruences and inequations true without any tolerance.
bool solves(const Problem& problem, const Point& x);

/// The first of the points that does; nothing where none does.
std::optional<Point> firstSolution(const Problem& problem, const std::vector<Point>& points);

/// The point in the variables of the normal form, moduli last. Of two deviations one is
/// 0. Nothing where a removed variable has another value than the one that it was
/// removed with, where a slack is negative, or a congruence doesn't hold.
std::optional<Point> image(const PlainRecord& normal, const Point& x);

/// Integers within the bounds that make all equations and inequations true.
bool satisfies(const PlainRecord& normal, const Point& z);

/// The first of the points that solves the problem while its image doesn't satisfy the
/// normal form, or the other way round; nothing where there is none.
std::optional<Point> firstDifference(const Problem& problem, const PlainRecord& normal,
                                     const std::vector<Point>& points);

/// The targets of the problem in the order of the normal form: without a goal to reach
/// first, as indices.
std::vector<std::size_t> targetOrder(const Problem& problem);

/// The factor that all target rows are multiplied by.
mpq_class targetFactor(const Problem& problem, const PlainRecord& normal);

/// The range of the aggregated value of the problem, thresholds to greatest value;
/// nothing where one of them is missing.
struct TargetRange {
  mpq_class least;
  mpq_class greatest;
};
std::optional<TargetRange> targetRange(const Problem& problem);

// What is wrong with a normal form at the images of points: empty when nothing is.

/// A target in normal form is worth the factor times that of the problem up to one
/// constant, a target to reach exactly the factor times its distance.
std::string targetFaults(const Problem& problem, const PlainRecord& normal,
                         const std::vector<Point>& points);

/// The aggregated value is as far from both ends of its range as in the problem, times
/// the factor.
std::string rangeFaults(const Problem& problem, const PlainRecord& normal,
                        const std::vector<Point>& points);

/// Slacks and deviations are worth what the rows of the problem leave, once divided by
/// their units.
std::string unitFaults(const Problem& problem, const PlainRecord& normal,
                       const std::vector<Point>& points);

/// What is wrong with the record as a normal form of the problem, a line each; solutions
/// aside. Empty when nothing is.
std::string formFaults(const Problem& problem, const PlainRecord& normal);

}  // namespace starsift::oracle

// What laws over lattices of small problems share: points as vectors of a lattice, and
// lattices that were made from problems.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "SmallProblems.h"
#include "numbers/Conversion.h"
#include "support/generators/NumberGenerators.h"
#include "support/oracles/NormalFormOracle.h"
#include "system/Exceptions.h"

namespace starsift::test {

template <class T>
Vector<T> vectorOf(const oracle::Point& point) {
  Vector<T> vector;
  for (const mpq_class& value : point)
    vector.insertComponent(vector.dimension() + 1, NumberConversion<T, QQ>::convert(toQQ(value)));
  return vector;
}

template <class T>
oracle::Point pointOf(const Vector<T>& vector) {
  oracle::Point point;
  for (const T& value : vector)
    point.push_back(gmpRational(NumberConversion<QQ, T>::convert(value)));
  return point;
}

/// At most `most` of the points, from all parts of the list.
inline std::vector<oracle::Point> someOf(const std::vector<oracle::Point>& points,
                                         std::size_t most) {
  std::vector<oracle::Point> chosen;
  const std::size_t distance = points.size() / most + 1;
  for (std::size_t i = 0; i < points.size(); i += distance) chosen.push_back(points[i]);
  return chosen;
}

/// The points around the box that solve the problem.
inline std::vector<oracle::Point> solutionsOf(const oracle::Problem& problem) {
  std::vector<oracle::Point> points = pointsAround(problem);
  std::erase_if(points, [&](const oracle::Point& x) { return !oracle::solves(problem, x); });
  return points;
}

/// Every coordinate lies between l and r; that of the target counts for nothing.
template <class T>
bool isWithinBounds(const Lattice<T, long double>& lattice, const Vector<T>& vector) {
  const bool hasTarget = lattice.frame.latticeKind == LatticeKind::full && lattice.atuValid;
  for (Index j = hasTarget ? 2 : 1; j <= lattice.basis.m; ++j)
    if (vector[j] < lattice.frame.l[j] || vector[j] > lattice.frame.r[j]) return false;
  return true;
}

/// How many problems the number type carried through a law, and how many it refused.
struct Tally {
  int carried = 0;
  int refused = 0;
};

}  // namespace starsift::test

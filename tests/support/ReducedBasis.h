// Bases that go through the reduction in tests, and the judgement of the result.
#pragma once

#include <algorithm>
#include <vector>

#include "algorithms/LllConditions.h"
#include "lattice/Lattice.h"
#include "numbers/VectorQQ.h"

namespace starsift::test {

/// Check vectors that no vector of integers fits: every vector may be checked, none is a
/// solution or the best one.
template <class T>
void allowChecks(Lattice<T, long double>& lattice) {
  lattice.latticeKind = LatticeKind::full;
  lattice.params.pair = false;
  if (lattice.m == 0) return;
  lattice.l[lattice.m] = T(1) / T(2);
  lattice.r[lattice.m] = T(1) / T(2);
}

/// The first vector that the reduction compares with the one next above.
inline Index firstCompared(bool deep) {
  return deep ? 3 : 2;
}

/// Reduced by the conditions of the reduction, judged exactly; rows that depend on those above
/// must be the last ones. Exchanges are judged from row `first` on. For a basis of which the
/// reduction itself says that it is reduced.
template <class T>
bool isReduced(const Matrix<T>& basis, Index first = 2) {
  using Kind = LllViolation::Kind;
  // The Gram-Schmidt data round in the 19th digit, so near one half and delta.
  const QQ rounding(1, 1'000'000'000'000);
  const QQ delta = QQ(1) - QQ(1, 1'000'000'000) - rounding;
  const std::vector<LllViolation> violations = lllViolations(basis, delta, QQ(1, 2) + rounding);
  const auto isDependent = [](const LllViolation& found) { return found.kind == Kind::dependent; };
  const Index dependent = std::count_if(violations.begin(), violations.end(), isDependent);
  const Index rank = basis.rowCount() - dependent;
  return std::all_of(violations.begin(), violations.end(), [&](const LllViolation& found) {
    return isDependent(found) ? found.k > rank : found.kind == Kind::exchange && found.k < first;
  });
}

}  // namespace starsift::test

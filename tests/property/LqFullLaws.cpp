// A restarted run of the full factorisation against one from scratch.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "algorithms/reduction/LqFull.h"
#include "support/generators/ContainerGenerators.h"
#include "support/oracles/OrthogonalCertificate.h"

namespace starsift {
namespace {

using M = Matrix<long double>;
using test::exactRows;

struct Factors {
  M L;
  M Q;
  Reflectors<long double> Ps;

  Index run(const M& a, Index kk, Index mm) { return lq_full(a, L, Q, Ps, kk, mm); }
};

M arbitraryMatrix(Index rows, Index columns) {
  const auto rank = *rc::gen::inRange<Index>(1, rows + 1);
  return test::matrixFrom<long double>(*test::arbitraryDependentRows(rows, columns, rank), columns);
}

RC_GTEST_PROP(LqFull, RestartsLikeARunFromScratch, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 8);
  const auto columns = *rc::gen::inRange<Index>(1, 9);
  M a = arbitraryMatrix(rows, columns);
  Factors factors;
  Index mm = *rc::gen::inRange<Index>(1, rows + 1);
  factors.run(a, 1, mm);
  for (int round = 0; round < 4; ++round) {
    const auto kk = *rc::gen::inRange<Index>(1, std::min(mm + 1, rows) + 1);
    mm = *rc::gen::inRange<Index>(kk, rows + 1);
    const M other = arbitraryMatrix(rows, columns);
    for (Index j = kk; j <= rows; ++j)
      if (*rc::gen::arbitrary<bool>()) a[j] = other[j];
    Factors scratch;
    RC_ASSERT(factors.run(a, kk, mm) == scratch.run(a, 1, mm));
    RC_ASSERT(factors.L.rowCount() == mm);
    for (Index j = 1; j <= mm; ++j) RC_ASSERT(identical(factors.L[j], scratch.L[j]));
    for (Index j = 1; j <= columns; ++j) RC_ASSERT(identical(factors.Q[j], scratch.Q[j]));
    RC_ASSERT(factors.Ps.count() == scratch.Ps.count());
  }
}

RC_GTEST_PROP(LqFull, GivesTheRowsBack, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 8);
  const auto columns = *rc::gen::inRange<Index>(1, 9);
  const M a = arbitraryMatrix(rows, columns);
  Factors factors;
  factors.run(a, 1, 0);
  RC_ASSERT(
      test::isProduct(exactRows(factors.L), exactRows(factors.Q), exactRows(a), test::tenth(16)));
  RC_ASSERT(test::areOrthogonal(exactRows(factors.Q), test::tenth(17)));
}

}  // namespace
}  // namespace starsift

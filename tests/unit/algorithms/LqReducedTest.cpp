#include "algorithms/reduction/LqReduced.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "support/fixtures/ExpectFails.h"
#include "support/oracles/OrthogonalCertificate.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::exactRows;
using test::tenth;
using M = Matrix<long double>;

constexpr long double infinity = std::numeric_limits<long double>::infinity();

/// Everything that a run writes.
struct Factors {
  M Lr;
  M Q;
  Vector<long double> d;
  Array<M> cache;

  Index run(const M& a, Index kk = 1, Index mm = 0, const StepObserver& onStep = {}) {
    return lq_reduced(a, Lr, Q, d, &cache, kk, mm, onStep);
  }
};

std::string refusal(const M& a) {
  Factors factors;
  try {
    factors.run(a);
  } catch (const DecimalPrecisionException& exception) {
    return exception.message();
  }
  return "factored";
}

TEST(LqReduced, FactorsTheRows) {
  const M a{{3, 4, 0}, {4, 3, 1}, {1, 1, 7}};
  Factors factors;
  EXPECT_EQ(factors.run(a), 0);
  EXPECT_TRUE(test::isOrthogonalisation(exactRows(a), factors.Lr, factors.d, tenth(18)));
  EXPECT_TRUE(test::areOrthogonal(exactRows(factors.Q), tenth(17)));
  EXPECT_TRUE(
      test::isProduct(exactRows(factors.Lr), exactRows(factors.Q), exactRows(a), tenth(18)));
}

TEST(LqReduced, NeedsNoCache) {
  const M a{{3, 4}, {4, 3}};
  Factors factors;
  EXPECT_EQ(lq_reduced(a, factors.Lr, factors.Q, factors.d, {}, 1, 0), 0);
  EXPECT_TRUE(test::isOrthogonalisation(exactRows(a), factors.Lr, factors.d, tenth(18)));
}

TEST(LqReduced, FindsTheFirstVanishingPivot) {
  Factors factors;
  EXPECT_EQ(factors.run({{1, 2, 3}, {4, 5, 6}, {5, 7, 9}, {1, 0, 0}}), 3);
  EXPECT_EQ(factors.run({{1, 2}, {1, 2}}), 2);
  EXPECT_EQ(factors.run({{0, 0}, {1, 2}}), 1);
  EXPECT_EQ(factors.run({{1, 0}, {0, 1}, {1, 1}}), 3);
  EXPECT_EQ(factors.run({{0}}), 1);
}

TEST(LqReduced, TakesASquaredLengthUpToTheToleranceForZero) {
  Factors factors;
  EXPECT_EQ(factors.run({{3e-5L}}), 1);  // 0.9e-9
  EXPECT_EQ(factors.run({{3.2e-5L}}), 0);
}

TEST(LqReduced, DoesNoRowsBehindTheLastOne) {
  Factors factors;
  EXPECT_EQ(factors.run({{1, 2}, {1, 3}, {1, 2}}, 1, 2), 0);
  EXPECT_EQ(factors.Q.rowCount(), 2);
  EXPECT_EQ(factors.Lr.rowCount(), 2);
  EXPECT_EQ(factors.Lr.columnCount(), 2);
  EXPECT_EQ(factors.d.dimension(), 2);
}

TEST(LqReduced, CacheHoldsTheRowsOfEachStep) {
  Factors factors;
  factors.run({{2, 0, 0}, {4, 3, 0}, {6, 6, 5}});
  ASSERT_EQ(factors.cache.dimension(), 3);
  EXPECT_EQ(factors.cache[1].rowCount(), 3);
  EXPECT_TRUE(identical(factors.cache[2][1], Vector<long double>{0, 3, 0}));
  EXPECT_TRUE(identical(factors.cache[2][2], Vector<long double>{0, 6, 5}));
  EXPECT_TRUE(identical(factors.cache[3][1], Vector<long double>{0, 0, 5}));
  EXPECT_EQ(factors.cache[3].rowCount(), 1);
}

TEST(LqReduced, CacheEndsAtADependency) {
  Factors factors;
  EXPECT_EQ(factors.run({{1, 0}, {2, 0}, {0, 1}}), 2);
  EXPECT_EQ(factors.cache.dimension(), 2);
}

TEST(LqReduced, CacheReplaysNoRowThatIsUnchanged) {
  M a{{2, 0, 0}, {4, 3, 0}, {6, 6, 5}};
  Factors factors;
  factors.run(a);
  factors.cache[2][1] = Vector<long double>{0, 0, 7};  // what must be read, not made anew
  EXPECT_EQ(factors.run(a, 2, 0), 0);
  EXPECT_EQ(factors.d[2], 49);
}

TEST(LqReduced, RestartAfterAnExceptionIsThatFromScratch) {
  M a{{1, 0, 0}, {1, 1, 0}, {0, 0, 1e2500L}};
  Factors factors;
  EXPECT_THROW(factors.run(a), DecimalPrecisionException);
  a[3] = Vector<long double>{1, 1, 1};
  EXPECT_EQ(factors.run(a, 2, 0), 0);
  EXPECT_TRUE(test::isOrthogonalisation(exactRows(a), factors.Lr, factors.d, tenth(18)));
}

TEST(LqReduced, ReportsEachStepBeforeItIsDone) {
  Factors factors;
  std::string steps;
  factors.run({{1, 0}, {2, 0}, {0, 1}}, 1, 0, [&steps](Index k) { steps += std::to_string(k); });
  EXPECT_EQ(steps, "12");
}

TEST(LqReduced, ThrowsForAnInfiniteLength) {
  EXPECT_EQ(refusal({{infinity}}), "_d has infinite entry");
  EXPECT_EQ(refusal({{1e2500L}}), "_d has infinite entry");
  EXPECT_EQ(refusal({{1e2400L}}), "factored");
}

TEST(LqReduced, RefusesAFirstRowBelowOne) {
  Factors factors;
  EXPECT_FAILS_WITH(factors.run({{1}}, 0, 1), "lq_reduced: kk is invalid (< 1)");
}

TEST(LqReduced, RefusesRowsThatAreNotThere) {
  Factors factors;
  EXPECT_FAILS_WITH(factors.run({{1}, {2}}, 2, 1), "lq_reduced: dimension mismatch");
  EXPECT_FAILS_WITH(factors.run({{1}, {2}}, 1, 3), "lq_reduced: dimension mismatch");
  EXPECT_FAILS_WITH(factors.run(M(), 1, 0), "lq_reduced: dimension mismatch");
}

TEST(LqReduced, RefusesACacheThatEndsBeforeTheFirstRow) {
  Factors factors;
  EXPECT_FAILS_WITH(factors.run({{1}, {2}}, 2, 2), "lq_reduced: dimension mismatch");
}

TEST(LqReduced, RefusesToRestartWithoutACache) {
  Factors factors;
  const M a{{1, 0}, {0, 1}};
  EXPECT_FAILS_WITH(lq_reduced(a, factors.Lr, factors.Q, factors.d, {}, 2, 2),
                    "lq_reduced: non caching variant needs kk == 1");
}

}  // namespace
}  // namespace starsift

#include "search/decide/ProofScope.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::problemFrom;

TEST(ProofScopeTest, HasStepsWhereAVariableHasDecimals) {
  const char* const rows = "[ ] [ ] [ [ 3 1 ] ] [ 1 ] [ ] [ ] [ ] [ ] ";
  EXPECT_FALSE(proofScope(problemFrom(rows + std::string("[ 0 0 ] [ 0 0 ] [ 5 5 ]"))).hasSteps);
  EXPECT_TRUE(proofScope(problemFrom(rows + std::string("[ 0 2 ] [ 0 0 ] [ 5 5 ]"))).hasSteps);
}

TEST(ProofScopeTest, KnowsWhetherTheToleranceOfEquationsMatters) {
  const std::string end = " ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]";
  EXPECT_TRUE(proofScope(problemFrom("[ ] [ ] [ [ 1 ] ] [ 1" + end)).equationsAreExact);
  EXPECT_FALSE(proofScope(problemFrom("[ ] [ ] [ [ 1 ] ] [ 1.0000000005" + end)).equationsAreExact);
}

}  // namespace
}  // namespace starsift

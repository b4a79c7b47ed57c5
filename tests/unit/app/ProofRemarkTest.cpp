#include "app/ProofRemark.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

constexpr std::string_view proof = "This proves that the problem has no solution.";

TEST(ProofRemark, IsMadeOnEachReportThatIsAProof) {
  EXPECT_EQ(proofRemark("Unfulfillable inequality detected --> NO SOLUTIONS!"), proof);
  EXPECT_EQ(proofRemark("Unfulfillable equality detected --> NO SOLUTIONS!"), proof);
  EXPECT_EQ(proofRemark("Unfulfillable infinite inequation detected --> NO SOLUTIONS!"), proof);
  EXPECT_EQ(proofRemark("sol bounds error"), proof);
  EXPECT_EQ(proofRemark("The equation system has no integer solution :("), proof);
}

TEST(ProofRemark, IsMadeOnNoOtherReport) {
  EXPECT_EQ(proofRemark("ineq bounds error1"), "");
  EXPECT_EQ(proofRemark("numbers too large for the reduction"), "");
  EXPECT_EQ(proofRemark(""), "");
}

}  // namespace
}  // namespace starsift

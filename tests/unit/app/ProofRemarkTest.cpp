#include "app/ProofRemark.h"

#include <gtest/gtest.h>

#include <string>

namespace starsift {
namespace {

constexpr std::string_view proof = "This proves that the problem has no solution.";
constexpr std::string_view exactProof = "This proves that no solution holds exactly.";

class ProofRemark : public testing::Test {
 protected:
  ~ProofRemark() override { setProofScope({}); }
};

TEST_F(ProofRemark, IsMadeOnEachReportThatIsAProof) {
  setProofScope({.equationsAreExact = true});
  EXPECT_EQ(proofRemark("Unfulfillable inequality detected --> NO SOLUTIONS!"), proof);
  EXPECT_EQ(proofRemark("Unfulfillable equality detected --> NO SOLUTIONS!"), proof);
  EXPECT_EQ(proofRemark("Unfulfillable infinite inequation detected --> NO SOLUTIONS!"), proof);
  EXPECT_EQ(proofRemark("sol bounds error"), proof);
  EXPECT_EQ(proofRemark("The equation system has no integer solution :("), proof);
}

TEST_F(ProofRemark, IsWeakerWhereTheToleranceOfEquationsMatters) {
  setProofScope({});
  EXPECT_EQ(proofRemark("Unfulfillable inequality detected --> NO SOLUTIONS!"), exactProof);
  EXPECT_EQ(proofRemark("Unfulfillable equality detected --> NO SOLUTIONS!"), exactProof);
  EXPECT_EQ(proofRemark("The equation system has no integer solution :("), exactProof);
}

TEST_F(ProofRemark, OfWhatDependsOnNoEquationStaysAsItIs) {
  setProofScope({});
  EXPECT_EQ(proofRemark("Unfulfillable infinite inequation detected --> NO SOLUTIONS!"), proof);
  EXPECT_EQ(proofRemark("sol bounds error"), proof);
}

TEST_F(ProofRemark, SaysWhereStepsMatter) {
  setProofScope({.equationsAreExact = true, .hasSteps = true});
  EXPECT_EQ(proofRemark("The equation system has no integer solution :("),
            std::string(proof) + '\n' + std::string(stepsRemark));
  EXPECT_EQ(proofRemark("sol bounds error"), proof);
  EXPECT_EQ(proofRemark("ineq bounds error1"), "");
}

TEST_F(ProofRemark, IsMadeOnNoOtherReport) {
  for (const bool exact : {false, true}) {
    setProofScope({.equationsAreExact = exact});
    EXPECT_EQ(proofRemark("ineq bounds error1"), "");
    EXPECT_EQ(proofRemark("numbers too large for the reduction"), "");
    EXPECT_EQ(proofRemark(""), "");
  }
}

TEST(ProofRemarkAtFirst, PromisesNothingAboutEquations) {
  EXPECT_EQ(proofRemark("The equation system has no integer solution :("), exactProof);
}

}  // namespace
}  // namespace starsift

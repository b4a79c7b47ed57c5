#include "app/Verdict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "support/fixtures/FreshConsole.h"

namespace starsift {
namespace {

class VerdictTest : public test::FreshConsole {
 protected:
  std::string verdict() const {
    std::ostringstream text;
    writeVerdict(text, result_);
    return text.str();
  }

  SearchResult result_;
};

TEST_F(VerdictTest, OfNothingProvesNothing) {
  EXPECT_EQ(verdict(),
            "No solution was found. This proves nothing: there may be one all the same.\n");
  result_.hasStars = true;
  EXPECT_EQ(verdict(),
            "No further solution was found. This proves nothing: there may be one all the same.\n");
}

TEST_F(VerdictTest, OfASolutionWithoutTargetsIsSilent) {
  result_.solutions = 1;
  EXPECT_EQ(verdict(), "");
}

TEST_F(VerdictTest, TellsTheBestBoundOfAnOpenSearch) {
  result_.solutions = 1;
  result_.hasTargets = true;
  EXPECT_EQ(verdict(),
            "The first solution is the best one found, not proven to be the best there is.\n");
  result_.decided.bound = QQ(412);
  EXPECT_EQ(verdict(),
            "The first solution is the best one found, not proven to be the best there is: "
            "best bound 412.\n");
}

TEST_F(VerdictTest, TellsThatThereIsNoSolution) {
  result_.decided.proof = Proof::noSolution;
  EXPECT_EQ(verdict(), "There is no solution: the search was complete.\n");
  result_.scope.equationsAreExact = false;
  EXPECT_EQ(verdict(), "There is no solution that holds exactly: the search was complete.\n");
}

TEST_F(VerdictTest, TellsThatAllSolutionsAreFound) {
  result_.decided.proof = Proof::allFound;
  result_.decided.count = 3;
  result_.decided.nodes = 4500;
  EXPECT_EQ(verdict(), "All 3 solutions: the search was complete.\nNodes: 4500\n");
  result_.hasTargets = true;
  result_.scope.equationsAreExact = false;
  EXPECT_EQ(verdict(),
            "All 3 solutions that hold exactly: the search was complete.\n"
            "The first solution is optimal among those that hold exactly.\nNodes: 4500\n");
}

TEST_F(VerdictTest, SaysNothingOfTheFirstSolutionWhereAllWereOnlyCounted) {
  result_.decided.proof = Proof::allFound;
  result_.decided.count = 6;
  result_.hasTargets = true;
  result_.isCount = true;
  EXPECT_EQ(verdict(), "All 6 solutions: the search was complete.\n");
}

TEST_F(VerdictTest, TellsWhatWasCountedBeforeTheEnd) {
  result_.decided.count = 40364781;
  result_.isCount = true;
  EXPECT_EQ(verdict(), "Solutions counted: 40364781. This proves nothing: there may be more.\n");
}

TEST_F(VerdictTest, CallsSolutionsOfAnEarlierRunKnown) {
  result_.decided.count = 5;
  result_.hasStars = true;
  EXPECT_EQ(verdict(),
            "No further solution was found. This proves nothing: there may be one all the same.\n");
}

TEST_F(VerdictTest, SaysOfProofsThatStepsMatter) {
  result_.scope.hasSteps = true;
  result_.hasTargets = true;
  result_.decided.proof = Proof::optimum;
  EXPECT_EQ(verdict(),
            "The first solution is optimal.\n"
            "Variables with decimals: only multiples of their steps were considered.\n");
  EXPECT_THAT(jsonLine(result_), testing::HasSubstr(R"("steps_only": true)"));
  result_.decided.proof = Proof::none;
  EXPECT_THAT(verdict(), testing::Not(testing::HasSubstr("steps")));
  EXPECT_THAT(jsonLine(result_), testing::Not(testing::HasSubstr("steps_only")));
}

TEST_F(VerdictTest, TellsScriptsWhatTheStatusLeavesOpen) {
  EXPECT_THAT(jsonLine(result_), testing::Not(testing::HasSubstr("true")));
  result_.scope.equationsAreExact = false;
  result_.decided.proof = Proof::noSolution;
  EXPECT_THAT(jsonLine(result_), testing::HasSubstr(R"("exact_only": true)"));
  result_.decided.proof = Proof::none;
  result_.decided.undecided = Undecided::unbounded;
  EXPECT_THAT(jsonLine(result_), testing::HasSubstr(R"("unbounded": true)"));
}

TEST_F(VerdictTest, OfAReportThatProvesItKeepsWhatWasFound) {
  result_.solutions = 2;
  result_.scope.equationsAreExact = false;
  const SearchResult proved = provedBy("sol bounds error", result_);
  EXPECT_EQ(proved.decided.proof, Proof::noSolution);
  EXPECT_FALSE(proved.isExactOnly());
  EXPECT_EQ(proved.count(), 2U);
}

TEST_F(VerdictTest, TellsThatTheFirstSolutionIsOptimal) {
  result_.decided.proof = Proof::optimum;
  EXPECT_EQ(verdict(), "The first solution is optimal.\n");
}

TEST_F(VerdictTest, TellsWhatAProofWouldTake) {
  result_.solutions = 1;
  result_.decided.undecided = Undecided::tooLarge;
  result_.decided.estimatedSeconds = 3 * 86400;
  EXPECT_EQ(verdict(), "A complete search would take about 3 days; --prove runs it anyway.\n");
}

TEST_F(VerdictTest, NamesAVariableWithoutBound) {
  result_.solutions = 1;
  result_.decided.undecided = Undecided::noFiniteBox;
  result_.decided.variable = 2;
  EXPECT_EQ(verdict(), "No complete search: variable 2 is not bounded on both sides.\n");
}

TEST_F(VerdictTest, HasALineForScripts) {
  result_.decided.proof = Proof::optimum;
  result_.decided.bound = QQ(7, 2);
  result_.decided.nodes = 12;
  result_.best = QQ(7, 2);
  result_.solutions = 2;
  result_.passes = 3;
  result_.seconds = 0.5;
  result_.seed = 7;
  EXPECT_EQ(
      jsonLine(result_),
      R"({"status": "optimal", "complete": true, "solutions": 2, "count": "2", )"
      R"("best": "7/2", "bound": "7/2", "nodes": 12, "passes": 3, "seconds": 0.5, "seed": 7})");
}

TEST_F(VerdictTest, OfAnOptimumDoesNotCallOtherStarsOptimal) {
  result_.decided.proof = Proof::optimum;
  result_.hasTargets = true;
  result_.hasOtherStars = true;
  result_.best = QQ(7) / QQ(2);
  EXPECT_EQ(verdict(),
            "The optimum has the target norm 7/2.\n"
            "Known solutions between steps, or that hold only within the tolerance, were not "
            "considered.\n");
}

TEST_F(VerdictTest, HasAStatusForScripts) {
  const auto status = [this] { return jsonLine(result_).substr(0, 22); };
  EXPECT_EQ(status(), R"({"status": "open", "co)");
  result_.solutions = 1;
  EXPECT_EQ(status(), R"({"status": "found", "c)");
  result_.decided.proof = Proof::allFound;
  EXPECT_EQ(status(), R"({"status": "complete",)");
  result_.decided.proof = Proof::noSolution;
  EXPECT_EQ(status(), R"({"status": "infeasible)");
}

TEST_F(VerdictTest, OfAPartTellsWhatIsDone) {
  result_.part = PartResult{3, 8, 512, 100, false};
  EXPECT_EQ(verdict(),
            "Part 3 of 8 is not complete: 100 of its 512 subtrees are done; the same command goes "
            "on.\n");
  result_.decided.undecided = Undecided::enough;
  EXPECT_EQ(verdict(),
            "Part 3 of 8 is not complete: 100 of its 512 subtrees are done, and what was wanted "
            "was found.\n");
  EXPECT_NE(jsonLine(result_).find(R"("status": "found", "complete": false)"), std::string::npos);
}

TEST_F(VerdictTest, OfACompletePartIsNoProof) {
  result_.part = PartResult{3, 8, 512, 512, true};
  result_.decided.count = 17;
  EXPECT_EQ(verdict(), "Part 3 of 8 is complete: 17 solutions.\n");
  EXPECT_NE(jsonLine(result_).find(R"("status": "part", "complete": false)"), std::string::npos);
  EXPECT_NE(jsonLine(result_).find(R"("part": "3/8", "subtrees": 512, "done": 512})"),
            std::string::npos);
  result_.hasTargets = true;
  result_.decided.count = 0;
  result_.decided.best = QQ(-303);
  EXPECT_EQ(verdict(),
            "Part 3 of 8 is complete: no solution in it has a target norm below -303.\n");
}

TEST_F(VerdictTest, OfJoinedPartsNamesThoseMissingForScripts) {
  result_.missing = {2, 5};
  EXPECT_NE(jsonLine(result_).find(R"(, "missing": [2, 5]})"), std::string::npos);
}

}  // namespace
}  // namespace starsift

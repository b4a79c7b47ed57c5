#include <gtest/gtest.h>

#include "lattice/Lattice.h"
#include "stars/StarCheck.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ScratchDir.h"
#include "system/Console.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::ScratchDir;

template <class T>
class LatticeFilesOver : public testing::Test {
 protected:
  LatticeFilesOver() {
    lattice.setFileNames(scratch.file("p.sol"));
    lattice.setProblem(problem);
  }

  ScratchDir scratch;
  Vanu<T> problem =
      problemFrom<T>("[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  Lattice<T, long double> lattice;
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LatticeFilesOver, LatticeNumbers);

TYPED_TEST(LatticeFilesOver, NamesStandInTheBaseAndInTheProblemAsRead) {
  EXPECT_EQ(this->lattice.optFile, this->scratch.file("p.opt"));
  EXPECT_EQ(this->lattice.solFile, this->scratch.file("p.sol"));
  EXPECT_EQ(this->lattice.latFile, this->scratch.file("p.lat"));
  EXPECT_EQ(this->lattice.file.problem().optFile, this->lattice.optFile);
  EXPECT_EQ(this->lattice.file.path(), this->lattice.solFile);
}

TYPED_TEST(LatticeFilesOver, StarsAreReadAgainstTheProblemAsRead) {
  this->scratch.write("p.sol", "[ 1 2 ]\n");
  EXPECT_TRUE(this->lattice.readStarsFromSolFile(StarReading::append));
  ASSERT_EQ(this->lattice.file.stars.dimension(), 1);
  EXPECT_EQ(this->lattice.file.stars[1].targetNorm, TypeParam(-5));
}

TYPED_TEST(LatticeFilesOver, PeekStoresNothing) {
  this->scratch.write("p.sol", "[ 1 2 ]\n");
  EXPECT_TRUE(this->lattice.readStarsFromSolFile(StarReading::peek));
  EXPECT_EQ(this->lattice.file.stars.dimension(), 0);
}

TYPED_TEST(LatticeFilesOver, StarsAreCheckedAgainstTheProblemAsRead) {
  this->scratch.write("p.sol", "[ 1 2 ]\n[ 1 9 ]\n");
  this->lattice.readStarsFromSolFile(StarReading::append);
  EXPECT_FALSE(this->lattice.checkStars());
  EXPECT_EQ(this->lattice.file.stars.dimension(), 1);
  EXPECT_TRUE(this->lattice.checkStars());
}

TYPED_TEST(LatticeFilesOver, FileIsWrittenWhileTheSwitchIsOn) {
  this->lattice.file.stars.resize(1, false);
  this->lattice.file.stars[1] = Star<TypeParam>{TypeParam(1), TypeParam(2)};
  this->lattice.run.outputSwitch = true;
  this->lattice.writeSolFile(Stars::asTheyAre);
  EXPECT_EQ(this->scratch.read("p.sol"), "[ 1 2 ] | 0 | [ ] | 0 | -1 | \n");
}

TYPED_TEST(LatticeFilesOver, FileStaysWhileTheSwitchIsOff) {
  this->scratch.write("p.sol", "old\n");
  this->lattice.writeSolFile(Stars::asTheyAre);
  EXPECT_EQ(this->scratch.read("p.sol"), "old\n");
}

TYPED_TEST(LatticeFilesOver, MissingNameIsReportedAndTheRunGoesOn) {
  consoleState() = {};
  this->lattice.file.setPaths({});
  this->lattice.run.outputSwitch = true;
  testing::internal::CaptureStderr();
  this->lattice.writeSolFile(Stars::asTheyAre);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "\n*** solFile is not set - solution write not possible\n");
  EXPECT_NE(lastOutputTime(), 0);
}

TYPED_TEST(LatticeFilesOver, MissingNameDoesNotMatterWhileTheSwitchIsOff) {
  this->lattice.file.setPaths({});
  testing::internal::CaptureStderr();
  this->lattice.writeSolFile(Stars::asTheyAre);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TYPED_TEST(LatticeFilesOver, ReportsShowTheGoalsOfTheProblemAsRead) {
  this->lattice.file.stars.resize(2, false);
  for (Star<TypeParam>& star : this->lattice.file.stars) {
    star = Star<TypeParam>{TypeParam(1), TypeParam(2)};
    star.targetValues = Vector<TypeParam>{TypeParam(5)};
  }
  const std::string one = "x = [ 1 2 ]\n\nTarget values: [ 5↑ ]\nTarget Norm: 0\nSlack Norm: 0\n";
  EXPECT_EQ(this->lattice.starReport(2), one);
  EXPECT_EQ(this->lattice.solutionsText(), "\n" + one + "\n---\n\n" + one);
}

TYPED_TEST(LatticeFilesOver, StatusShowsTheSearch) {
  this->lattice.atuValid = true;
  this->lattice.found.bestTarget.targetNorm = TypeParam(-6);
  this->lattice.found.bestTarget.slackNorm = TypeParam(1);
  this->lattice.found.bestTarget.time = 60;
  this->lattice.found.solutions.resize(1, false);
  this->lattice.found.solutions[1].time = 7;
  EXPECT_EQ(this->lattice.statusText(),
            "\nT(bestTarget) = -6, S(bestTarget) = 1 -- { 1:00 min(s):sec(s) }\n"
            "\nSolutions found: 1\n\n{ The first solution/s was/were found after: 7 sec(s) }\n");
}

TYPED_TEST(LatticeFilesOver, StatusOfABenchmarkDoesNotCountSolutions) {
  this->lattice.params.bench = 2.0F;
  this->lattice.found.solutions.resize(1, false);
  this->lattice.found.solutions[1].time = 7;
  EXPECT_EQ(this->lattice.statusText(),
            "\n{ The first solution/s was/were found after: 7 sec(s) }\n");
}

using LatticeFiles = LatticeFilesOver<long double>;

// 18 digits are more than the text of a long double has.
TEST_F(LatticeFiles, StarsStayWhereTheirTextWouldLoseADigit) {
  auto judged = std::make_shared<JudgedStar>();
  judged->star = Star<QQ>{QQ(123456789012345678), QQ(1)};
  judged->number = 1;
  lattice.found.solutions.resize(1, false);
  lattice.found.solutions[1].judged = std::move(judged);
  lattice.file.stars.resize(2, false);
  lattice.file.stars[1] = Star<long double>{4, 1};
  lattice.file.stars[2] = Star<long double>{3, 1};
  lattice.run.outputSwitch = true;
  EXPECT_THROW(lattice.writeSolFile(Stars::withSolutions), PrecisionException);
  ASSERT_EQ(lattice.file.stars.dimension(), 2);
  EXPECT_EQ(lattice.file.stars[1][1], 4);
  EXPECT_EQ(scratch.read("p.sol"), "<no file>");
  lattice.found.solutions.clear();
  lattice.writeSolFile(Stars::withSolutions);
  EXPECT_NE(scratch.read("p.sol"), "<no file>");
}

}  // namespace
}  // namespace starsift

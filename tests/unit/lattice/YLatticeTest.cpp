#include "lattice/YLattice.h"

#include <chrono>
#include <ctime>
#include <stdexcept>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using test::q;
using test::ScratchDir;
using Standard = Lattice<long double, long double>;
using Exact = Lattice<QQ, long double>;

template <class T>
void addStar(Lattice<T, long double>& lattice, const T& component) {
  const Index last = lattice.file.stars.dimension() + 1;
  lattice.file.stars.resize(last, false);
  lattice.file.stars[last] = Star<T>{component};
}

/// Adds a star, opens a block on the console and loses precision, but not over
/// rationals, where it adds the star and returns how many there are.
template <class Exception>
struct LosingStep {
  Index operator()(Standard& lattice) const {
    addStar(lattice, 99.0L);
    throw Exception("lost");
  }
  Index operator()(Exact& lattice) const {
    addStar(lattice, exactStar);
    return lattice.file.stars.dimension();
  }
  QQ exactStar = QQ(5);
};

class YLatticeTest : public testing::Test {
 protected:
  YLatticeTest() { consoleState() = {}; }
  ~YLatticeTest() override { consoleState() = {}; }

  void makeExactOnly() {
    lattice.useExtendedPrecision();
    addStar(lattice.exact(), q("1/3"));
  }

  YLattice<long double> lattice;
  /// Either form to be looked at.
  const YLattice<long double>& seen = lattice;
};

TEST_F(YLatticeTest, StartsInStandardPrecision) {
  EXPECT_FALSE(lattice.usesExact());
}

TEST_F(YLatticeTest, ExtendedPrecisionTakesTheStateAlong) {
  addStar(lattice.standard(), 0.1L);
  lattice.useExtendedPrecision();
  EXPECT_TRUE(lattice.usesExact());
  ASSERT_EQ(lattice.exact().file.stars.dimension(), 1);
  EXPECT_EQ(lattice.exact().file.stars[1][1], q("1/10"));
}

TEST_F(YLatticeTest, LatticeThatIsNotLiveHoldsNoStarsAndNoProblem) {
  lattice.standard().file.editProblem().dt = Vector<long double>{1};
  addStar(lattice.standard(), 0.1L);
  lattice.useExtendedPrecision();
  EXPECT_EQ(seen.standard().file.stars.capacity(), 0);
  EXPECT_EQ(seen.standard().file.problem().dt.capacity(), 0);
  EXPECT_EQ(seen.exact().file.problem().dt.dimension(), 1);
  lattice.useStandardPrecision();
  EXPECT_EQ(seen.exact().file.stars.capacity(), 0);
  EXPECT_EQ(seen.exact().file.problem().dt.capacity(), 0);
  EXPECT_EQ(seen.standard().file.problem().dt.dimension(), 1);
}

TEST_F(YLatticeTest, ConversionThatFailsLeavesNothingBehind) {
  lattice.useExtendedPrecision();
  addStar(lattice.exact(), QQ(1));
  addStar(lattice.exact(), q("1/3"));
  lattice.tryStandardPrecision();
  EXPECT_TRUE(lattice.usesExact());
  EXPECT_EQ(seen.exact().file.stars.dimension(), 2);
  EXPECT_EQ(seen.standard().file.stars.capacity(), 0);
}

TEST_F(YLatticeTest, ExtendedPrecisionTwiceConvertsOnce) {
  lattice.useExtendedPrecision();
  addStar(lattice.exact(), q("1/3"));
  lattice.useExtendedPrecision();
  EXPECT_EQ(lattice.exact().file.stars.dimension(), 1);
}

TEST_F(YLatticeTest, StandardPrecisionTakesTheStateBack) {
  lattice.useExtendedPrecision();
  addStar(lattice.exact(), q("1/10"));
  lattice.useStandardPrecision();
  EXPECT_FALSE(lattice.usesExact());
  ASSERT_EQ(lattice.standard().file.stars.dimension(), 1);
  EXPECT_EQ(lattice.standard().file.stars[1][1], 0.1L);
}

TEST_F(YLatticeTest, StandardPrecisionTwiceConvertsOnce) {
  addStar(lattice.standard(), 0.1L);
  lattice.useStandardPrecision();
  EXPECT_EQ(lattice.standard().file.stars.dimension(), 1);
}

TEST_F(YLatticeTest, WayBackThatLosesDigitsThrowsAndStaysExact) {
  makeExactOnly();
  EXPECT_THROW(lattice.useStandardPrecision(), PostCommaPrecisionException);
  EXPECT_TRUE(lattice.usesExact());
}

TEST_F(YLatticeTest, TryingTheWayBackIsSilent) {
  makeExactOnly();
  lattice.tryStandardPrecision();
  EXPECT_TRUE(lattice.usesExact());
  lattice.exact().file.stars[1][1] = q("1/4");
  lattice.tryStandardPrecision();
  EXPECT_FALSE(lattice.usesExact());
}

TEST_F(YLatticeTest, StepRunsOnTheStandardLattice) {
  const Index count = lattice.runStep([](auto& live) {
    static_assert(std::is_same_v<decltype(live), Standard&> ||
                  std::is_same_v<decltype(live), Exact&>);
    live.file.stars.resize(3, false);
    return live.file.stars.dimension();
  });
  EXPECT_EQ(count, 3);
  EXPECT_EQ(lattice.standard().file.stars.dimension(), 3);
  EXPECT_EQ(seen.exact().file.stars.dimension(), 0);
}

TEST_F(YLatticeTest, StepWithoutResultRuns) {
  lattice.runStep([](auto& live) { live.run.outputSwitch = true; });
  EXPECT_TRUE(lattice.standard().run.outputSwitch);
}

TEST_F(YLatticeTest, LostPrecisionRepeatsTheStepOnTheRestoredState) {
  addStar(lattice.standard(), 0.1L);
  EXPECT_EQ(lattice.runStep(LosingStep<PrecisionException>()), 2);
  EXPECT_FALSE(lattice.usesExact());
  ASSERT_EQ(lattice.standard().file.stars.dimension(), 2);
  EXPECT_EQ(lattice.standard().file.stars[1][1], 0.1L);
  EXPECT_EQ(lattice.standard().file.stars[2][1], 5.0L);
}

TEST_F(YLatticeTest, DerivedLossesOfPrecisionRepeatTheStepToo) {
  EXPECT_EQ(lattice.runStep(LosingStep<PreCommaPrecisionException>()), 1);
  EXPECT_EQ(lattice.runStep(LosingStep<PostCommaPrecisionException>()), 2);
  EXPECT_EQ(lattice.runStep(LosingStep<FatalPrecisionException>()), 3);
  EXPECT_EQ(lattice.runStep(LosingStep<DecimalPrecisionException>()), 4);
}

TEST_F(YLatticeTest, ResultThatOnlyFitsTheExactLatticeStaysThere) {
  EXPECT_EQ(lattice.runStep(LosingStep<PrecisionException>{q("1/3")}), 1);
  EXPECT_TRUE(lattice.usesExact());
  EXPECT_EQ(lattice.exact().file.stars[1][1], q("1/3"));
}

TEST_F(YLatticeTest, NextStepRunsOnTheExactLatticeWhereItStayed) {
  makeExactOnly();
  lattice.runStep(LosingStep<PrecisionException>());
  EXPECT_TRUE(lattice.usesExact());
  EXPECT_EQ(lattice.exact().file.stars.dimension(), 2);
}

TEST_F(YLatticeTest, StepOnTheExactLatticeTriesTheWayBack) {
  makeExactOnly();
  lattice.runStep([](auto& live) { live.file.stars.resize(0, false); });
  EXPECT_FALSE(lattice.usesExact());
}

TEST_F(YLatticeTest, StepThatPromisesToLeaveTheStateNeedsNoSnapshot) {
  const auto step = [](auto& live) -> Index {
    if constexpr (std::is_same_v<decltype(live), Standard&>) throw PrecisionException("lost");
    return live.file.stars.dimension();
  };
  addStar(lattice.standard(), 0.1L);
  EXPECT_EQ(lattice.runStep(step, OnFailure::unchanged), 1);
  EXPECT_EQ(lattice.standard().file.stars[1][1], 0.1L);
}

TEST_F(YLatticeTest, OtherExceptionsPass) {
  EXPECT_THROW(lattice.runStep(LosingStep<RestartException>()), RestartException);
  EXPECT_THROW(lattice.runStep(LosingStep<std::runtime_error>()), std::runtime_error);
  EXPECT_FALSE(lattice.usesExact());
  EXPECT_EQ(lattice.standard().file.stars.dimension(), 2);
}

TEST_F(YLatticeTest, LossInTheRepeatedStepPasses) {
  const auto step = [](auto&) { throw PreCommaPrecisionException("lost again"); };
  EXPECT_THROW(lattice.runStep(step), PreCommaPrecisionException);
  EXPECT_TRUE(lattice.usesExact());
}

TEST_F(YLatticeTest, DecimalLossInTheExactLatticePassesAsItIs) {
  makeExactOnly();
  const auto step = [](auto&) { throw DecimalPrecisionException("lost"); };
  EXPECT_THROW(lattice.runStep(step), DecimalPrecisionException);
}

/// Opens two blocks and loses precision; the exact run notes its depth.
struct BlockStep {
  void operator()(Standard& /*lattice*/) const {
    std::cout << openStamp(false) << " first" << endLine() << openStamp(false) << " second";
    throw PrecisionException("lost");
  }
  void operator()(Exact& /*lattice*/) const { *exactDepth = consoleDepth(); }
  Index* exactDepth;
};

TEST_F(YLatticeTest, DepthOfTheConsoleIsThatBeforeTheStep) {
  Index exactDepth = -1;
  testing::internal::CaptureStdout();
  std::cout << openStamp(false) << " outer";
  lattice.runStep(BlockStep{&exactDepth});
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(exactDepth, 1);
  EXPECT_EQ(consoleDepth(), 1);
}

/// Watches without a word.
class Bystander : public ReductionObserver {
 public:
  void onStep(const PassCounts& /*counts*/) override {}
};

TEST_F(YLatticeTest, TimesOfASearchCountFromTheStartOfTheProcess) {
  Bystander observer;
  const std::time_t before = std::time(nullptr);
  lattice.beginSearch(observer, std::chrono::hours(1));
  const auto* text = lattice.standard().run.runVariables.find(MainMutexVariable::startTime);
  const std::time_t start = std::stoll(text->copied());
  EXPECT_GE(start, before - 3600);
  EXPECT_LE(start, std::time(nullptr) - 3600);
}

TEST_F(YLatticeTest, SearchGoesOnInEitherLattice) {
  Bystander observer;
  lattice.standard().run.outputSwitch = true;
  lattice.beginSearch(observer, std::chrono::hours(1));
  const auto* text = lattice.standard().run.runVariables.find(MainMutexVariable::startTime);
  const std::string start = text->copied();
  const auto expectSearch = [&](auto& live) {
    EXPECT_EQ(live.run.runVariables[MainMutexVariable::startTime].get(), start);
    EXPECT_TRUE(live.params.stopping);
    EXPECT_TRUE(live.run.terminationSwitch);
    EXPECT_FALSE(live.run.outputSwitch);
    EXPECT_EQ(live.run.observer, &observer);
  };
  expectSearch(lattice.standard());
  lattice.useExtendedPrecision();
  expectSearch(lattice.exact());
  lattice.exact().run.runVariables[MainMutexVariable::runState].set("stopped");
  lattice.useStandardPrecision();
  expectSearch(lattice.standard());
  EXPECT_TRUE(lattice.stopped());
  lattice.endSearch();
  EXPECT_EQ(seen.standard().run.observer, nullptr);
  EXPECT_EQ(seen.exact().run.observer, nullptr);
}

/// Loses precision, and over rationals starts the lattice anew with a star.
struct RestartingStep {
  void operator()(Standard& /*lattice*/) const { throw PrecisionException("lost"); }
  void operator()(Exact& lattice) const {
    addStar(lattice, QQ(5));
    throw RestartException("Lattice was regenerated");
  }
};

TEST_F(YLatticeTest, RestartBehindAFailoverLeavesAUsableLattice) {
  addStar(lattice.standard(), 0.1L);
  EXPECT_THROW(lattice.runStep(RestartingStep()), RestartException);
  EXPECT_TRUE(lattice.usesExact());
  ASSERT_EQ(lattice.exact().file.stars.dimension(), 2);
  // The next step has the new lattice, and ends where its numbers fit.
  EXPECT_EQ(lattice.runStep([](auto& live) { return live.file.stars.dimension(); }), 2);
  EXPECT_FALSE(lattice.usesExact());
  ASSERT_EQ(lattice.standard().file.stars.dimension(), 2);
  EXPECT_EQ(lattice.standard().file.stars[2][1], 5.0L);
}

/// What the wrapper writes to the console at a level of `verb`.
class ReportsOfYLattice : public YLatticeTest {
 protected:
  /// In both forms.
  void setVerb(long level) {
    lattice.standard().params.verb = level;
    outputOf([this] {
      lattice.useExtendedPrecision();
      lattice.useStandardPrecision();
    });
    consoleState() = {};
  }

  template <class Use>
  static std::string outputOf(Use use) {
    testing::internal::CaptureStdout();
    use();
    return testing::internal::GetCapturedStdout();
  }
};

TEST_F(ReportsOfYLattice, SwitchesAreReported) {
  setVerb(2);
  EXPECT_EQ(outputOf([this] { lattice.useExtendedPrecision(); }),
            "|-> Switching to extended lattice precision\n");
  EXPECT_EQ(outputOf([this] { lattice.useStandardPrecision(); }),
            "|-> Using standard lattice precision\n");
  EXPECT_NE(lastOutputTime(), 0);
}

TEST_F(ReportsOfYLattice, SwitchThatIsNoneIsNotReported) {
  setVerb(2);
  EXPECT_EQ(outputOf([this] { lattice.useStandardPrecision(); }), "");
}

TEST_F(ReportsOfYLattice, FailedWayBackIsNotReported) {
  setVerb(2);
  outputOf([this] { makeExactOnly(); });
  EXPECT_EQ(outputOf([this] { lattice.tryStandardPrecision(); }), "");
}

TEST_F(ReportsOfYLattice, FailoverClosesTheBlockOfTheFailedStep) {
  setVerb(2);
  Index exactDepth = -1;
  EXPECT_EQ(outputOf([&] { lattice.runStep(BlockStep{&exactDepth}); }),
            "|-> first\n|    |-> second\n|    |-> Switching to extended lattice precision\n"
            "|-> Using standard lattice precision\n");
  EXPECT_EQ(exactDepth, 0);
}

TEST_F(ReportsOfYLattice, LevelOneIsSilent) {
  setVerb(1);
  EXPECT_EQ(outputOf([this] { lattice.runStep(LosingStep<PrecisionException>()); }), "");
}

TEST_F(ReportsOfYLattice, LevelZeroIsSilent) {
  EXPECT_EQ(outputOf([this] { lattice.runStep(LosingStep<PrecisionException>()); }), "");
}

TEST_F(ReportsOfYLattice, HigherLevelsReportToo) {
  setVerb(3);
  EXPECT_EQ(outputOf([this] { lattice.useExtendedPrecision(); }),
            "|-> Switching to extended lattice precision\n");
}

TEST_F(YLatticeTest, ChangeOfTheFormThatIsNotLiveIsFatal) {
  EXPECT_FAILS_WITH(lattice.exact(), "The exact precision is not in use");
  EXPECT_FAILS_WITH(lattice.readOpt(), "The exact precision is not in use");
  EXPECT_FAILS_WITH(lattice.tightenBounds(), "The exact precision is not in use");
  EXPECT_FAILS_WITH(lattice.readParams({}), "The exact precision is not in use");
  lattice.useExtendedPrecision();
  EXPECT_FAILS_WITH(lattice.standard(), "The standard precision is not in use");
}

TEST_F(YLatticeTest, FileNamesAreThoseOfTheLiveLattice) {
  lattice.useExtendedPrecision();
  lattice.setFileNames("p.sol");
  EXPECT_EQ(seen.exact().file.path(), "p.sol");
  lattice.useStandardPrecision();
  EXPECT_EQ(seen.standard().file.path(), "p.sol");
}

/// The run of the command on files.
class YLatticeOnFiles : public YLatticeTest {
 protected:
  void run(std::string_view problem, std::string_view stars) {
    scratch.write("p.opt", problem);
    scratch.write("p.sol", stars);
    lattice.setFileNames(scratch.file("p.sol"));
    lattice.useExtendedPrecision();
    lattice.readOpt();
    lattice.tryStandardPrecision();
    problemFits = !lattice.usesExact();
    found = lattice.readStarsExactly(StarReading::append);
    starsFit = !lattice.usesExact();
    allRight = lattice.checkStars();
    lattice.sortStars();
    lattice.removeDuplicates(Duplicates::ofPointAndParams);
    lattice.setOutputSwitch(true);
    lattice.writeSolFile(Stars::asTheyAre);
    lattice.sortStars();
    lattice.removeDuplicates(Duplicates::ofPoint);
    console = lattice.solutionsText();
  }

  ScratchDir scratch;
  bool problemFits = false;
  bool starsFit = false;
  bool found = false;
  bool allRight = false;
  std::string console;
};

constexpr std::string_view tenfold =
    "[ inf ] [ [ 10 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 999999999999999999 ]";

TEST_F(YLatticeOnFiles, DecimalsStayInTheStandardLattice) {
  run(tenfold, "[ 0.1 ]\n[ -1 ]\n[ 2.5 ]\n");
  EXPECT_TRUE(problemFits && starsFit && found);
  EXPECT_FALSE(allRight);
  EXPECT_FALSE(lattice.usesExact());
  EXPECT_EQ(scratch.read("p.sol"),
            "[ 2.5 ] | -25 | [ 25 ] | 0 | -1 | \n[ 0.1 ] | -1 | [ 1 ] | 0 | -1 | \n");
}

TEST_F(YLatticeOnFiles, StarOfAThirdStaysInTheExactLattice) {
  run(tenfold, "[ 1/3 ]\n[ 2.5 ]\n");
  EXPECT_TRUE(problemFits);
  EXPECT_FALSE(starsFit);
  EXPECT_TRUE(allRight);
  EXPECT_TRUE(lattice.usesExact());
  EXPECT_EQ(scratch.read("p.sol"),
            "[ 2:1/2 ] | -25 | [ 25 ] | 0 | -1 | \n[ 1/3 ] | -3:1/3 | [ 3:1/3 ] | 0 | -1 | \n");
}

TEST_F(YLatticeOnFiles, ProblemOfAThirdStaysInTheExactLattice) {
  run("[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 7/3 ]", "[ 2.5 ]\n[ 0.5 ]\n");
  EXPECT_FALSE(problemFits);
  EXPECT_EQ(scratch.read("p.sol"), "[ 1/2 ] | -1/2 | [ 1/2 ] | 0 | -1 | \n");
}

TEST_F(YLatticeOnFiles, WrongStarOfAThirdIsForgotten) {
  run(tenfold, "[ -1/3 ]\n[ 2.5 ]\n");
  EXPECT_FALSE(starsFit);
  EXPECT_FALSE(lattice.usesExact());
  EXPECT_EQ(scratch.read("p.sol"), "[ 2.5 ] | -25 | [ 25 ] | 0 | -1 | \n");
}

TEST_F(YLatticeOnFiles, ValueThatDoesNotFitMakesTheCheckExact) {
  run(tenfold, "[ 999999999999999999 ] | 0 | [ 0 ] | 0 | -1 |\n[ 2.5 ]\n");
  EXPECT_TRUE(starsFit);
  EXPECT_TRUE(lattice.usesExact());
  EXPECT_EQ(scratch.read("p.sol"),
            "[ 999999999999999999 ] | -9999999999999999990 | [ 9999999999999999990 ] | 0 | -1 | \n"
            "[ 2:1/2 ] | -25 | [ 25 ] | 0 | -1 | \n");
}

TEST_F(YLatticeOnFiles, EighteenDigitsAreWrittenFromTheExactLatticeAndComeBack) {
  run("[ ] [ ] [ [ 0 ] ] [ 0 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ inf ]",
      "[ 123456789012345678 ]\n[ 2.5 ]\n");
  EXPECT_FALSE(lattice.usesExact());
  EXPECT_EQ(scratch.read("p.sol"),
            "[ 123456789012345678 ] | 0 | [ ] | 0 | -1 | \n[ 2:1/2 ] | 0 | [ ] | 0 | -1 | \n");
  EXPECT_EQ(console,
            "\nx = [ 1.23457e+17 ]\n\nTarget values: [ ]\nTarget Norm: 0\nSlack Norm: 0\n\n---\n\n"
            "x = [ 2.5 ]\n\nTarget values: [ ]\nTarget Norm: 0\nSlack Norm: 0\n");
}

TEST_F(YLatticeOnFiles, StarsThatDifferInTheEighteenthDigitHaveAnOrder) {
  const std::string_view problem = "[ ] [ ] [ [ 0 ] ] [ 0 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ inf ]";
  run(problem, "[ 100000000000000003 ]\n[ 100000000000000001 ]\n[ 100000000000000002 ]\n");
  EXPECT_EQ(scratch.read("p.sol"),
            "[ 100000000000000001 ] | 0 | [ ] | 0 | -1 | \n"
            "[ 100000000000000002 ] | 0 | [ ] | 0 | -1 | \n"
            "[ 100000000000000003 ] | 0 | [ ] | 0 | -1 | \n");
}

TEST_F(YLatticeOnFiles, FileKeepsWhatDiffersInItsParametersAndTheConsoleDoesNot) {
  run(tenfold, "[ 1 ] | 0 | [ 0 ] | 0 | 3 | b\n[ 1 ] | 0 | [ 0 ] | 0 | 3 | a\n");
  EXPECT_EQ(scratch.read("p.sol"),
            "[ 1 ] | -10 | [ 10 ] | 0 | 3 | a\n[ 1 ] | -10 | [ 10 ] | 0 | 3 | b\n");
  EXPECT_EQ(console,
            "\nx = [ 1 ]\n\nTarget values: [ 10↑ ]\nTarget Norm: -10\nSlack Norm: 0\n"
            "Found after: 3 sec(s)\n");
}

TEST_F(YLatticeOnFiles, WrongStarsOnlyRemoveTheFile) {
  run(tenfold, "[ -1 ]\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.opt"});
  EXPECT_EQ(console, "\n");
}

TEST_F(YLatticeOnFiles, MissingStarsAreNone) {
  scratch.write("p.opt", tenfold);
  lattice.setFileNames(scratch.file("p.sol"));
  lattice.useExtendedPrecision();
  lattice.readOpt();
  EXPECT_FALSE(lattice.readStarsFromSolFile(StarReading::append));
  EXPECT_TRUE(lattice.checkStars());
}

}  // namespace
}  // namespace starsift

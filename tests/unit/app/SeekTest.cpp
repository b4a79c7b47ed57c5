// The searches that come to an end, each for its reason.
#include "app/Seek.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <utility>

#include "app/Interrupt.h"
#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using std::chrono::hours;
using testing::EndsWith;
using testing::HasSubstr;
using Parameters = std::vector<std::string>;

// 3 x + 5 y = 31, both from 0 to 5: only [ 2 5 ].
constexpr std::string_view one =
    "[ ] [ ] [ [ 3 5 ] ] [ 31 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// The same with x + 2 y largest.
constexpr std::string_view best =
    "[ inf ] [ [ 1 2 ] ] [ [ 3 5 ] ] [ 31 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// 6 x + 10 y + 15 z = 29 has integer solutions, but none from 0 to 5.
constexpr std::string_view none =
    "[ ] [ ] [ [ 6 10 15 ] ] [ 29 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 5 5 5 ]";

// Its bounds allow more than the hundredfold of what its row does.
constexpr std::string_view wide =
    "[ ] [ ] [ [ 7 11 13 29 ] ] [ 1000 ] [ ] [ ] [ ] [ ] "
    "[ 0 0 0 0 ] [ 0 0 0 0 ] [ 1000 1000 1000 1000 ]";

/// Counted by four nested loops.
constexpr std::ptrdiff_t solutionsOfWide = []() {
  std::ptrdiff_t count = 0;
  for (int u = 0; 29 * u <= 1000; ++u)
    for (int z = 0; 13 * z + 29 * u <= 1000; ++z)
      for (int y = 0; 11 * y + 13 * z + 29 * u <= 1000; ++y)
        if ((1000 - 11 * y - 13 * z - 29 * u) % 7 == 0) ++count;
  return count;
}();

/// Meets in the middle of a step what can't be computed.
class BreakingWatch : public SearchWatch {
 public:
  using SearchWatch::SearchWatch;
  void onStep(const PassCounts& /*counts*/) override { throw DecimalPrecisionException("lost"); }
};

/// Loses precision in its first step only, which is one of the standard lattice.
class BrokenOnce : public SearchWatch {
 public:
  using SearchWatch::SearchWatch;
  void onStep(const PassCounts& counts) override {
    if (!std::exchange(broken_, true)) throw DecimalPrecisionException("lost");
    SearchWatch::onStep(counts);
  }

 private:
  bool broken_ = false;
};

class SeekTest : public test::FreshConsole {
 protected:
  /// The search in p.opt by a command with these parameters that began at `start_`.
  template <class Watch = SearchWatch>
  SearchEnd run(std::string_view problem, const Parameters& parameters) {
    lattice_.setFileNames(dir_.write("p.opt", problem));
    lattice_.useExtendedPrecision();
    lattice_.readParams(parameters);
    StatusLine line(nullptr, start_);
    Watch watch(lattice_, line, start_);
    testing::internal::CaptureStdout();
    const SearchEnd end = Seek(lattice_, watch, options_, report_).run();
    console_ = testing::internal::GetCapturedStdout();
    passes_ = watch.passes();
    return end;
  }

  std::string report() const { return report_.str(); }
  std::string solFile() const { return dir_.read("p.sol"); }

  test::ScratchDir dir_;
  YLattice<long double> lattice_;
  SeekOptions options_;
  StatusLine::Clock::time_point start_ = StatusLine::Clock::now();
  std::ostringstream report_;
  std::string console_;
  Index passes_ = 0;
};

TEST_F(SeekTest, GoesOnToTheBestUnlessANumberOfSolutionsIsGiven) {
  constexpr std::string_view upToTen =
      "[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 10 ]";
  lattice_.useExtendedPrecision();
  lattice_.seekBest();
  options_.prove = false;
  EXPECT_EQ(run(upToTen, {}), SearchEnd::fruitless);
  EXPECT_THAT(report(), HasSubstr("x = [ 10 ]"));
}

TEST_F(SeekTest, EndsWhenThereAreEnoughSolutions) {
  EXPECT_EQ(run(one, {}), SearchEnd::goal);
  EXPECT_THAT(solFile(), testing::StartsWith("[ 2 5 ] | 0 | [ ] | 0 | 0 | "));
  EXPECT_THAT(report(), HasSubstr("x = [ 2 5 ]"));
  EXPECT_THAT(console_, HasSubstr("Solutions found: 1"));
}

TEST_F(SeekTest, FindsASolutionInABoxFarWiderThanItsRowAllows) {
  EXPECT_EQ(run(wide, {"--iters=1"}), SearchEnd::goal);
  EXPECT_EQ(lattice_.solutionCount(), 1);
}

// The row leaves x = 0 alone, but a star may miss it by a billionth.
TEST_F(SeekTest, KeepsStarsThatAreOutsideOfWhatItSearches) {
  dir_.write("p.sol", "[ 5 ]\n");
  run("[ ] [ ] [ [ 1/100000000000 ] ] [ 0 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]", {});
  EXPECT_THAT(solFile(), HasSubstr("[ 5 ]"));
  EXPECT_THAT(solFile(), HasSubstr("[ 0 ]"));
}

TEST_F(SeekTest, EndsWhenATargetNormIsMet) {
  EXPECT_EQ(run(best, {"--sol=0", "--tnorm=-12"}), SearchEnd::goal);
  EXPECT_THAT(report(), EndsWith("best one found, not proven to be the best there is.\n"));
}

TEST_F(SeekTest, GoesOnWhereTheTargetNormIsWorse) {
  options_.prove = false;
  EXPECT_EQ(run(best, {"--sol=0", "--tnorm=-13", "--iters=2"}), SearchEnd::passes);
}

TEST_F(SeekTest, EndsAfterItsPasses) {
  options_.prove = false;
  EXPECT_EQ(run(one, {"--sol=2", "--iters=3"}), SearchEnd::passes);
  EXPECT_EQ(passes_, 3);
  EXPECT_THAT(solFile(), HasSubstr("[ 2 5 ]"));
}

TEST_F(SeekTest, EndsWhenItsTimeIsOver) {
  start_ -= hours(1);
  EXPECT_EQ(run(one, {"--rtime=3600"}), SearchEnd::time);
  EXPECT_EQ(passes_, 0);
  EXPECT_THAT(report(), EndsWith("This proves nothing: there may be one all the same.\n"));
}

TEST_F(SeekTest, EndsWithoutLimitsWhenNothingNewComes) {
  options_.prove = false;
  EXPECT_EQ(run(none, {"--verb=1"}), SearchEnd::fruitless);
  EXPECT_THAT(report(), HasSubstr("Search ended: nothing new for long."));
  EXPECT_THAT(report(), HasSubstr(", restarts = 20, seed = 1\n"));
  EXPECT_EQ(solFile(), "<no file>");
}

TEST_F(SeekTest, GoesOnFruitlesslyWhereALimitWasSet) {
  options_.prove = false;
  EXPECT_EQ(run(none, {"--iters=25"}), SearchEnd::passes);
  EXPECT_EQ(passes_, 25);
}

TEST_F(SeekTest, ProvesThatThereIsNoSolution) {
  EXPECT_EQ(run(none, {}), SearchEnd::decided);
  EXPECT_THAT(report(), HasSubstr("There is no solution: the search was complete.\n"));
}

TEST_F(SeekTest, ProvesTheOptimum) {
  lattice_.seekBest();
  EXPECT_EQ(run(best, {}), SearchEnd::decided);
  EXPECT_THAT(report(), HasSubstr("x = [ 2 5 ]"));
  EXPECT_THAT(report(), HasSubstr("The first solution is optimal.\n"));
}

TEST_F(SeekTest, EndsWithAllSolutionsIfThereAreNoMore) {
  EXPECT_EQ(run(one, {"--sol=5"}), SearchEnd::decided);
  EXPECT_THAT(report(), HasSubstr("All 1 solutions: the search was complete.\n"));
}

TEST_F(SeekTest, FindsAllSolutions) {
  EXPECT_EQ(run(wide, {"--sol=0"}), SearchEnd::decided);
  const std::string stars = solFile();
  EXPECT_EQ(std::count(stars.begin(), stars.end(), '\n'), solutionsOfWide);
}

TEST_F(SeekTest, CountsWithoutKeeping) {
  options_.count = true;
  EXPECT_EQ(run(wide, {}), SearchEnd::decided);
  EXPECT_THAT(report(), HasSubstr("All " + std::to_string(solutionsOfWide) +
                                  " solutions: the search was complete.\n"));
  EXPECT_EQ(solFile(), "<no file>");
}

TEST_F(SeekTest, EndsWithALineForScripts) {
  options_.json = true;
  run(none, {});
  EXPECT_THAT(report(), HasSubstr("\n{\"status\": \"infeasible\", \"complete\": true, "));
  EXPECT_THAT(report(), EndsWith("}\n"));
}

TEST_F(SeekTest, EndsByASignal) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGTERM);
        const SearchEnd end = run(one, {"--sol=2"});
        std::_Exit(end == SearchEnd::interrupt && interrupted() == SIGTERM ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(SeekTest, EndsWhereNumbersAreTooLarge) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(run<BreakingWatch>(one, {"--verb=1"}), SearchEnd::overflow);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n*** lost\n");
  EXPECT_THAT(report(), HasSubstr("Search ended: numbers too large."));
}

TEST_F(SeekTest, GoesOnInExactNumbersWhereLongDoubleIsLost) {
  EXPECT_EQ(run<BrokenOnce>(one, {}), SearchEnd::goal);
  EXPECT_THAT(solFile(), testing::StartsWith("[ 2 5 ]"));
}

TEST_F(SeekTest, CountsTimesFromTheStartOfTheProcess) {
  start_ -= hours(1);
  EXPECT_EQ(run(one, {}), SearchEnd::goal);
  EXPECT_THAT(solFile(), testing::StartsWith("[ 2 5 ] | 0 | [ ] | 0 | 36"));
}

TEST_F(SeekTest, KeepsKnownStarsInABenchmark) {
  dir_.write("p.sol", "[ 2 5 ] | 0 | [ ] | 0 | 70 | other | 1.0\n");
  EXPECT_EQ(run(one, {"--bench=1"}), SearchEnd::goal);
  EXPECT_THAT(solFile(), testing::StartsWith("[ 2 5 ] | 0 | [ ] | 0 | 0 | --help=0 "));
  EXPECT_THAT(solFile(), EndsWith("\n[ 2 5 ] | 0 | [ ] | 0 | 70 | other | 1.0\n"));
}

TEST_F(SeekTest, TellsOfEachRestartAtTheOutermostLevel) {
  options_.prove = false;
  EXPECT_EQ(run(one, {"--verb=2", "--sol=2", "--iters=3"}), SearchEnd::passes);
  EXPECT_THAT(console_, testing::Not(HasSubstr("|    |-> Restart")));
  EXPECT_THAT(console_, HasSubstr("\n|-> Restart / termination handling ...\n"));
}

}  // namespace
}  // namespace starsift

// What a search does when it has found what it looked for, or gets no further.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include <csignal>
#include <ctime>
#include <filesystem>

#include "certificates/LatticeEquality.h"
#include "support/fixtures/BasisRows.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/RowsText.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using test::messageOf;
using test::rowsText;
using test::ScratchDir;
using test::textOf;

// 3 x + 5 y + 7 z = 31, all from 0 to 9; z as small as it gets.
constexpr const char* small =
    "[ -inf ] [ [ 0 0 1 ] ] [ [ 3 5 7 ] ] [ 31 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]";

template <class T>
class LatticeRestartOver : public test::LatticeOfProblem<T> {
 protected:
  LatticeRestartOver() {
    auto& lattice = this->live;
    this->prepare(small);
    // What the preparation has found is as good as any other.
    lattice.resize(lattice.basis.n, 0, Vectors::discard);
    lattice.params.sol = 0;
    lattice.params.variate = false;
    lattice.params.stopping = true;
    lattice.run.terminationSwitch = true;
    lattice.file.setPaths({"", scratch.file("p.sol"), ""});
    lattice.latFile = scratch.file("p.lat");
  }

  /// Files (1, 0, 4) and (2, 5, 0), the better one last.
  void findSolutions() {
    auto& lattice = this->live;
    lattice.checkSolution(this->image({T(1), T(0), T(4)}), Space::raw, 4, Announce::silent);
    lattice.checkSolution(this->image({T(2), T(5), T(0)}), Space::raw, 5, Announce::silent);
  }

  /// Point and time of each solution.
  std::vector<std::string> solutionTexts() const {
    std::vector<std::string> texts;
    for (const auto& solution : this->live.found.solutions)
      texts.push_back(textOf(this->pointOf(solution)) + " @" + textOf(solution.time));
    return texts;
  }

  /// The message of the restart; what was written goes to `console`.
  std::string restart() {
    std::string message;
    console = this->consoleOf([&] {
      message =
          messageOf<RestartException>([&] { this->live.restartHandling(Outcome::unfinished); });
    });
    return message;
  }
  void finish() {
    console = this->consoleOf([this] { this->live.restartHandling(Outcome::finished); });
  }

  ScratchDir scratch;
  std::string console;
};
TYPED_TEST_SUITE(LatticeRestartOver, test::LatticeNumbers);

TYPED_TEST(LatticeRestartOver, FinishedSearchIsStoppedAndReported) {
  this->findSolutions();
  EXPECT_FALSE(this->live.stopped());
  this->finish();
  EXPECT_TRUE(this->live.stopped());
  EXPECT_EQ(this->console, this->live.statusText() + "\n");
  EXPECT_EQ(this->live.run.restarts, 0);
}

TYPED_TEST(LatticeRestartOver, NothingEndsWhileTheTerminationIsOff) {
  this->live.run.terminationSwitch = false;
  this->finish();
  EXPECT_EQ(this->console, "");
  this->console = this->consoleOf([&] { this->live.restartHandling(Outcome::unfinished); });
  EXPECT_EQ(this->console, "");
  EXPECT_FALSE(this->live.stopped());
  EXPECT_EQ(this->live.run.restarts, 0);
}

TYPED_TEST(LatticeRestartOver, ProcessThatMayNotStopIsTerminated) {
  this->live.params.stopping = false;
  EXPECT_EXIT(this->live.restartHandling(Outcome::finished), testing::KilledBySignal(SIGTERM), "");
}

TYPED_TEST(LatticeRestartOver, UnfinishedSearchStartsAgain) {
  this->findSolutions();
  EXPECT_EQ(this->restart(), "Lattice was regenerated");
  EXPECT_EQ(this->console, "");
  EXPECT_EQ(this->live.run.restarts, 1);
  EXPECT_FALSE(this->live.stopped());
  this->restart();
  EXPECT_EQ(this->live.run.restarts, 2);
}

TYPED_TEST(LatticeRestartOver, RestartsAreLimited) {
  this->live.params.iters = 1;
  EXPECT_EQ(this->restart(), "Lattice was regenerated");
  EXPECT_EQ(this->restart(), "nothing thrown");
  EXPECT_EQ(this->live.run.restarts, 1);
  EXPECT_TRUE(this->live.stopped());
}

TYPED_TEST(LatticeRestartOver, NoRestartIsTheLimitOfZero) {
  this->live.params.iters = 0;
  EXPECT_EQ(this->restart(), "nothing thrown");
  EXPECT_TRUE(this->live.stopped());
}

TYPED_TEST(LatticeRestartOver, RestartKeepsSolutionsStarsAndSettings) {
  this->findSolutions();
  auto& lattice = this->live;
  const std::string before = rowsText(lattice.basis.B());
  test::setRow(lattice, 1, Vector<TypeParam>(lattice.basis.m));
  lattice.file.stars.resize(1, false);
  lattice.file.stars[1] = Star<TypeParam>{9, 4, 0};
  this->restart();
  EXPECT_EQ(rowsText(lattice.basis.B()), before);
  EXPECT_EQ(lattice.frame.latticeKind, LatticeKind::full);
  const std::vector<std::string> found = this->solutionTexts();
  EXPECT_THAT(found, testing::IsSupersetOf({"[ 1 0 4 ] @4", "[ 2 5 0 ] @5"}));
  EXPECT_EQ(lattice.found.bestTarget.targetNorm, TypeParam(0));
  EXPECT_EQ(lattice.found.bestTarget.time, 5);
  ASSERT_EQ(lattice.file.stars.dimension(), 1);
  EXPECT_EQ(textOf(lattice.file.stars[1].x()), "[ 9 4 0 ]");
  EXPECT_TRUE(lattice.run.terminationSwitch);
  EXPECT_FALSE(lattice.run.outputSwitch);
  EXPECT_EQ(lattice.latFile, this->scratch.file("p.lat"));
  EXPECT_TRUE(this->scratch.names().empty());
}

using LatticeRestart = LatticeRestartOver<long double>;

TEST_F(LatticeRestart, NothingIsLostWhereTheLatticeCanNotBeMade) {
  this->findSolutions();
  live.run.outputSwitch = true;
  live.file.stars.resize(1, false);
  // Two primes.
  live.optOriginal.rx = Vector<long double>{999983, 999979, 9};
  EXPECT_EQ(messageOf<PrecisionException>([this] { live.regenerateLattice(); }), "R overflow");
  EXPECT_EQ(live.file.stars.dimension(), 1);
  EXPECT_THAT(solutionTexts(), testing::ElementsAre("[ 1 0 4 ] @4", "[ 2 5 0 ] @5"));
  EXPECT_TRUE(live.run.outputSwitch);
  EXPECT_TRUE(live.run.terminationSwitch);
}

TYPED_TEST(LatticeRestartOver, VariationShufflesTheBasisEachTimeAnew) {
  auto& lattice = this->live;
  const Matrix<TypeParam> before(lattice.basis.B());
  lattice.params.variate = true;
  this->restart();
  const Matrix<TypeParam> first(lattice.basis.B());
  this->restart();
  EXPECT_TRUE(sameLattice(first, before));
  EXPECT_TRUE(sameLattice(lattice.basis.B(), before));
  EXPECT_FALSE(identical(first, before) && identical(lattice.basis.B(), before));
  EXPECT_FALSE(identical(first, lattice.basis.B()));
}

TYPED_TEST(LatticeRestartOver, VariationChangesMoreThanTheOrder) {
  auto& lattice = this->live;
  lattice.params.variate = false;
  this->restart();
  const Matrix<TypeParam> plain(lattice.basis.B());
  lattice.params.variate = true;
  this->restart();
  const Matrix<TypeParam>& varied = lattice.basis.B();
  EXPECT_TRUE(sameLattice(varied, plain));
  const auto isOld = [&plain](const Vector<TypeParam>& row) {
    return std::find(plain.begin(), plain.end(), row) != plain.end();
  };
  EXPECT_FALSE(std::all_of(varied.begin(), varied.end(), isOld));
}

TYPED_TEST(LatticeRestartOver, VariationDependsOnTheSeed) {
  this->live.params.variate = true;
  Lattice<TypeParam, long double> other;
  other.assignFrom(this->live, Settings::copy);
  other.run.seed = 2;
  this->restart();
  this->consoleOf(
      [&] { EXPECT_THROW(other.restartHandling(Outcome::unfinished), RestartException); });
  EXPECT_EQ(other.run.seed, 2U);
  EXPECT_TRUE(sameLattice(this->live.basis.B(), other.basis.B()));
  EXPECT_NE(rowsText(this->live.basis.B()), rowsText(other.basis.B()));
}

TYPED_TEST(LatticeRestartOver, VariationRepeatsFromRunToRun) {
  this->live.params.variate = true;
  Lattice<TypeParam, long double> other;
  other.assignFrom(this->live, Settings::copy);
  this->restart();
  this->consoleOf(
      [&] { EXPECT_THROW(other.restartHandling(Outcome::unfinished), RestartException); });
  EXPECT_EQ(rowsText(this->live.basis.B()), rowsText(other.basis.B()));
}

TYPED_TEST(LatticeRestartOver, ResultsAreWrittenWhileTheOutputIsOn) {
  this->findSolutions();
  this->live.run.outputSwitch = true;
  this->finish();
  EXPECT_EQ(this->scratch.names(), (std::vector<std::string>{"p.lat", "p.sol"}));
  EXPECT_NE(this->scratch.read("p.sol").find("[ 2 5 0 ]"), std::string::npos);
}

TYPED_TEST(LatticeRestartOver, WritingTheResultsSavesTheLattice) {
  auto& lattice = this->live;
  test::exchangeRows(lattice, 1, 2);
  lattice.run.outputSwitch = true;
  lattice.writeResults();
  EXPECT_EQ(rowsText(lattice.basis.B_save), rowsText(lattice.basis.B()));
  EXPECT_EQ(this->scratch.names(), std::vector<std::string>{"p.lat"});
}

TYPED_TEST(LatticeRestartOver, ResultsOfAnUnfinishedLatticeAreItsStarsOnly) {
  auto& lattice = this->live;
  lattice.run.outputSwitch = true;
  lattice.frame.latticeKind = LatticeKind::equations;
  lattice.writeResults();
  lattice.reset(nullptr, LatPath::keep);
  lattice.writeResults();
  EXPECT_TRUE(this->scratch.names().empty());
}

TYPED_TEST(LatticeRestartOver, RegenerationWritesWhatItMadeAnew) {
  this->findSolutions();
  auto& lattice = this->live;
  lattice.run.outputSwitch = true;
  lattice.regenerateLattice();
  EXPECT_TRUE(lattice.run.outputSwitch);
  EXPECT_TRUE(lattice.run.terminationSwitch);
  EXPECT_EQ(this->scratch.names(), (std::vector<std::string>{"p.lat", "p.sol"}));
  EXPECT_NE(this->scratch.read("p.lat").find(textOf(lattice.basis.B())), std::string::npos);
}

TYPED_TEST(LatticeRestartOver, SolutionsThatComeBackEndNothing) {
  this->findSolutions();
  this->live.params.sol = 1;
  EXPECT_EQ(this->restart(), "Lattice was regenerated");
}

TYPED_TEST(LatticeRestartOver, StepsAreReportedAtTheHighestLevel) {
  this->findSolutions();
  this->live.params.verb = 2;
  this->restart();
  EXPECT_THAT(this->console, testing::StartsWith("|-> Restart / termination handling ...\n"));
  const std::size_t status = this->console.find("Solutions found: 2\n");
  const std::size_t step = this->console.find("|    |-> Regenerating lattice ...\n");
  EXPECT_NE(step, std::string::npos) << this->console;
  EXPECT_LT(status, step) << this->console;
  EXPECT_NE(lastOutputTime(), 0);
  EXPECT_EQ(consoleDepth(), 0);
}

TYPED_TEST(LatticeRestartOver, BlockIsClosedWhereNothingEnds) {
  this->live.params.verb = 2;
  this->live.run.terminationSwitch = false;
  this->finish();
  EXPECT_EQ(this->console, "|-> Restart / termination handling ...\n\n");
  EXPECT_EQ(consoleDepth(), 0);
}

TYPED_TEST(LatticeRestartOver, FirstSecondStaysTheTimeOfDiscovery) {
  auto& lattice = this->live;
  HeuristicVector<TypeParam, long double> good;
  static_cast<Vector<TypeParam>&>(good) = this->image({TypeParam(1), TypeParam(0), TypeParam(4)});
  lattice.score(good.score, good, Space::raw);
  good.time = 0;
  lattice.found.collected.insert(good);
  lattice.checkSolution(this->image({TypeParam(1), TypeParam(0), TypeParam(4)}), Space::raw, 0,
                        Announce::silent);
  lattice.checkSolution(this->image({TypeParam(2), TypeParam(5), TypeParam(0)}), Space::raw, 0,
                        Announce::silent);
  lattice.offerBest(this->image({TypeParam(-3), TypeParam(8), TypeParam(0)}), 0);
  ASSERT_TRUE(lattice.found.bestVector.isSet());
  lattice.run.runVariables[MainMutexVariable::startTime].set(
      std::to_string(std::time(nullptr) - 1000));
  // Only what the lattice made anew finds by itself is found now.
  lattice.regenerateLattice();
  EXPECT_THAT(this->solutionTexts(), testing::IsSupersetOf({"[ 1 0 4 ] @0", "[ 2 5 0 ] @0"}));
  EXPECT_EQ(lattice.found.bestTarget.time, 0);
  ASSERT_TRUE(lattice.found.bestVector.isSet());
  EXPECT_EQ(lattice.found.bestVector.time, 0);
  ASSERT_EQ(lattice.found.collected.count(), 1);
  for (const auto& vector : lattice.found.collected) EXPECT_EQ(vector.time, 0);
}

TYPED_TEST(LatticeRestartOver, TrackingOfTheFormerLatticeEndsWithIt) {
  auto& lattice = this->live;
  this->setSilently(lattice.params.consistency, true);
  lattice.run.consistencyForced = true;
  lattice.regenerateLattice();
  EXPECT_FALSE(lattice.params.consistency);
  EXPECT_FALSE(lattice.run.consistencyForced);
  EXPECT_FALSE(lattice.reactionsOff);
}

TYPED_TEST(LatticeRestartOver, TrackingThatTheUserAskedForStays) {
  auto& lattice = this->live;
  lattice.params.consistency = true;
  lattice.regenerateLattice();
  EXPECT_TRUE(lattice.params.consistency);
  EXPECT_FALSE(lattice.run.consistencyForced);
}

// Saving makes the basis of the moment the generated one.
TYPED_TEST(LatticeRestartOver, ResultsAreWrittenBehindTheRegenerationToo) {
  auto& lattice = this->live;
  lattice.params.variate = true;
  Lattice<TypeParam, long double> silent;
  silent.assignFrom(lattice, Settings::copy);
  this->consoleOf(
      [&] { EXPECT_THROW(silent.restartHandling(Outcome::unfinished), RestartException); });
  ASSERT_FALSE(identical(silent.basis.B_save, silent.basis.B()));
  lattice.run.outputSwitch = true;
  this->restart();
  EXPECT_TRUE(identical(lattice.basis.B(), silent.basis.B()));
  EXPECT_TRUE(identical(lattice.basis.B_save, lattice.basis.B()));
}

TYPED_TEST(LatticeRestartOver, ResultsAreWrittenWhereNothingEnds) {
  for (const bool finished : {false, true}) {
    this->findSolutions();
    this->live.run.terminationSwitch = false;
    this->live.run.outputSwitch = true;
    this->consoleOf(
        [&] { this->live.restartHandling(finished ? Outcome::finished : Outcome::unfinished); });
    EXPECT_EQ(this->scratch.names(), (std::vector<std::string>{"p.lat", "p.sol"}));
    for (const char* name : {"p.lat", "p.sol"}) std::filesystem::remove(this->scratch.file(name));
  }
}

TYPED_TEST(LatticeRestartOver, LimitBelowTheRestartsSoFarEndsNothing) {
  this->live.run.restarts = 3;
  this->live.params.iters = 2;
  EXPECT_EQ(this->restart(), "Lattice was regenerated");
  EXPECT_EQ(this->live.run.restarts, 4);
  EXPECT_FALSE(this->live.stopped());
}

TYPED_TEST(LatticeRestartOver, UnfinishedSearchSaysNothingBelowTheHighestLevel) {
  this->findSolutions();
  this->live.params.verb = 1;
  EXPECT_EQ(this->restart(), "Lattice was regenerated");
  EXPECT_EQ(this->console, "");
  // Nor where it ends for good.
  this->live.params.iters = this->live.run.restarts;
  EXPECT_EQ(this->restart(), "nothing thrown");
  EXPECT_EQ(this->console, "");
  EXPECT_TRUE(this->live.stopped());
}

/// SIGTERM does nothing but count, while this lives.
class CountedTermination {
 public:
  CountedTermination() : before_(std::signal(SIGTERM, &count)) { received_ = 0; }
  CountedTermination(const CountedTermination&) = delete;
  CountedTermination& operator=(const CountedTermination&) = delete;
  ~CountedTermination() { std::signal(SIGTERM, before_); }

  static int received() { return received_; }

 private:
  static void count(int /*signal*/) { received_ = received_ + 1; }

  static inline volatile std::sig_atomic_t received_ = 0;
  void (*before_)(int);
};

TYPED_TEST(LatticeRestartOver, TerminationIsNoStop) {
  const CountedTermination termination;
  this->live.params.stopping = false;
  this->finish();
  EXPECT_EQ(termination.received(), 1);
  EXPECT_FALSE(this->live.stopped());
  this->live.params.stopping = true;
  this->finish();
  EXPECT_EQ(termination.received(), 1);
  EXPECT_TRUE(this->live.stopped());
}

}  // namespace
}  // namespace starsift

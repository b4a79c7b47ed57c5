// Stored vectors across a change of the lattice.
#include <gtest/gtest.h>

#include <ctime>

#include "support/fixtures/BasisRows.h"
#include "support/fixtures/CheckedLattice.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::LatticeStage;
using test::textOf;

// x + 2 y between 2 and 9, both from 0 to 5; x + y largest.
constexpr const char* climb =
    "[ inf ] [ [ 1 1 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// x + y = 1 modulo 3, both from 0 to 5.
constexpr const char* congruence =
    "[ ] [ ] [ [ 1 1 ] ] [ 1 ] [ 3 ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

template <class T>
class LatticeBackupOver : public test::CheckedLattice<T> {
 protected:
  /// A best vector, and two solutions of which the second one is the best target.
  void fill() {
    auto& lattice = this->live;
    lattice.offerBest(this->image({T(0), T(0)}), 3);
    lattice.checkSolution(this->image({T(1), T(2)}), Space::raw, 4, Announce::silent);
    lattice.checkSolution(this->image({T(5), T(1)}), Space::raw, 5, Announce::silent);
    HeuristicVector<T, long double> good;
    static_cast<Vector<T>&>(good) = this->image({T(1), T(2)});
    lattice.score(good.score, good, Space::raw);
    good.time = 6;
    lattice.found.collected.insert(good);
    lattice.found.chosen.insert(good);
    lattice.file.stars.resize(1, false);
    lattice.file.stars[1] = Star<T>{T(5)};
  }

  /// The same, all found in the first second of a search that began long ago.
  void fillInFirstSecond() {
    fill();
    auto& lattice = this->live;
    lattice.found.bestVector.time = lattice.found.bestTarget.time = 0;
    for (FiledSolution<T>& solution : lattice.found.solutions) solution.time = 0;
    for (auto* set : {&lattice.found.collected, &lattice.found.chosen}) set->first()->time = 0;
    lattice.run.runVariables[MainMutexVariable::startTime].set(
        std::to_string(std::time(nullptr) - 1000));
  }

  void expectFirstSecond() {
    auto& lattice = this->live;
    EXPECT_EQ(lattice.found.bestVector.time, 0);
    EXPECT_EQ(lattice.found.bestTarget.time, 0);
    ASSERT_EQ(lattice.found.solutions.dimension(), 2);
    for (const FiledSolution<T>& solution : lattice.found.solutions) EXPECT_EQ(solution.time, 0);
    for (auto* set : {&lattice.found.collected, &lattice.found.chosen}) {
      ASSERT_EQ(set->count(), 1);
      EXPECT_EQ(set->first()->time, 0);
    }
  }

  static std::string entriesText(const VectorBackup<T, long double>& backup) {
    std::string text;
    for (const auto& entry : backup.entries)
      text += textOf(static_cast<int>(entry.origin)) + ":" + textOf<Vector<T>>(entry.vector) + "@" +
              textOf(entry.vector.time) + " ";
    return text;
  }

  void expectFilled() {
    auto& lattice = this->live;
    EXPECT_EQ(textOf<Vector<T>>(lattice.found.bestVector), textOf(this->image({T(0), T(0)})));
    EXPECT_EQ(lattice.found.bestVector.time, 3);
    EXPECT_EQ(textOf<Vector<T>>(lattice.found.bestTarget), textOf(this->image({T(5), T(1)})));
    EXPECT_EQ(lattice.found.bestTarget.time, 5);
    EXPECT_EQ(lattice.found.bestTarget.targetNorm, T(-6));
    ASSERT_EQ(lattice.found.solutions.dimension(), 2);
    EXPECT_EQ(textOf(this->pointOf(lattice.found.solutions[1])), "[ 5 1 ]");
    EXPECT_EQ(lattice.found.solutions[1].time, 5);
    EXPECT_EQ(textOf(this->pointOf(lattice.found.solutions[2])), "[ 1 2 ]");
    EXPECT_EQ(lattice.found.solutions[2].time, 4);
    for (auto* set : {&lattice.found.collected, &lattice.found.chosen}) {
      ASSERT_EQ(set->count(), 1);
      EXPECT_EQ(textOf<Vector<T>>(*set->first()), textOf(this->image({T(1), T(2)})));
      EXPECT_EQ(set->first()->time, 6);
      EXPECT_TRUE(set->first()->score.isSolution);
    }
    ASSERT_EQ(lattice.file.stars.dimension(), 1);
    EXPECT_EQ(textOf(lattice.file.stars[1]), "[ 5 ]");
    EXPECT_FALSE(lattice.run.restoring);
  }

  void expectTaken() const {
    EXPECT_FALSE(this->live.found.bestVector.isSet());
    EXPECT_FALSE(this->live.found.bestTarget.isSet());
    EXPECT_EQ(this->live.found.solutions.dimension(), 0);
    EXPECT_EQ(this->live.found.collected.count(), 0);
    EXPECT_EQ(this->live.found.chosen.count(), 0);
    EXPECT_EQ(this->live.file.stars.dimension(), 0);
  }
};
TYPED_TEST_SUITE(LatticeBackupOver, test::LatticeNumbers);

TYPED_TEST(LatticeBackupOver, TakesEverythingOutInItsOrder) {
  this->use(climb);
  this->fill();
  const auto backup = this->live.backupVectors(BackupMode::points);
  EXPECT_EQ(this->entriesText(backup), "1:[ 0 0 ]@3 2:[ 5 1 ]@5 3:[ 1 2 ]@4 3:[ 5 1 ]@5 ");
  EXPECT_EQ(backup.stars.dimension(), 1);
  EXPECT_EQ(backup.collected.count(), 1);
  EXPECT_EQ(backup.chosen.count(), 1);
  this->expectTaken();
}

TYPED_TEST(LatticeBackupOver, EmptyLatticeHasNothingToKeep) {
  const auto backup = this->live.backupVectors(BackupMode::points);
  EXPECT_TRUE(backup.entries.empty());
  EXPECT_EQ(backup.stars.dimension(), 0);
}

TYPED_TEST(LatticeBackupOver, EveryFormComesBack) {
  for (const BackupMode mode : {BackupMode::vectors, BackupMode::coordinates, BackupMode::points}) {
    SCOPED_TRACE(static_cast<int>(mode));
    this->live.file.stars.clear();
    this->live.found.collected.clear();
    this->live.found.chosen.clear();
    this->use(climb);
    this->fill();
    auto backup = this->live.backupVectors(mode);
    this->live.restoreVectors(std::move(backup), mode);
    this->expectFilled();
  }
}

TYPED_TEST(LatticeBackupOver, SolutionsAreJudgedOnce) {
  for (const BackupMode mode : {BackupMode::vectors, BackupMode::coordinates, BackupMode::points}) {
    SCOPED_TRACE(static_cast<int>(mode));
    auto& lattice = this->live;
    lattice.file.stars.clear();
    lattice.found.collected.clear();
    lattice.found.chosen.clear();
    this->use(climb);
    this->fill();
    const auto best = lattice.found.bestTarget.judged;
    const auto other = lattice.found.solutions[1].judged;
    const Index last = lattice.found.lastFiled;
    auto backup = lattice.backupVectors(mode);
    lattice.restoreVectors(std::move(backup), mode);
    EXPECT_EQ(lattice.found.bestTarget.judged, best);
    EXPECT_EQ(lattice.found.solutions[1].judged, best);
    EXPECT_EQ(lattice.found.solutions[2].judged, other);
    EXPECT_EQ(lattice.found.lastFiled, last);
  }
}

TYPED_TEST(LatticeBackupOver, SolutionsOfAnotherProblemAreJudgedAgain) {
  this->use(climb);
  this->fill();
  auto& lattice = this->live;
  auto backup = lattice.backupVectors(BackupMode::points);
  lattice.file.editProblem().At[1][1] = TypeParam(3);
  lattice.restoreVectors(std::move(backup), BackupMode::points);
  EXPECT_EQ(lattice.found.bestTarget.targetNorm, TypeParam(-16));
  EXPECT_EQ(lattice.found.bestTarget.judged->star.targetNorm, QQ(-16));
  EXPECT_EQ(lattice.found.bestTarget.judged->problem, lattice.file.problemNumber());
}

TYPED_TEST(LatticeBackupOver, VectorsThatComeBackAreNotCounted) {
  this->use(climb);
  this->fill();
  auto backup = this->live.backupVectors(BackupMode::vectors);
  this->live.restoreVectors(std::move(backup), BackupMode::vectors);
  EXPECT_EQ(this->live.run.runVariables[MainMutexVariable::counter5].get(), "1");
}

TYPED_TEST(LatticeBackupOver, NothingIsWrittenOrEndedOnTheWayBack) {
  this->use(climb);
  this->fill();
  auto& lattice = this->live;
  lattice.params.sol = 1;
  lattice.params.stopping = true;
  lattice.run.terminationSwitch = true;
  lattice.run.outputSwitch = true;
  testing::internal::CaptureStderr();
  auto backup = lattice.backupVectors(BackupMode::vectors);
  lattice.restoreVectors(std::move(backup), BackupMode::vectors);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_FALSE(lattice.stopped());
}

TYPED_TEST(LatticeBackupOver, VectorsTakeTheLengthOfTheLattice) {
  this->use(climb);
  this->fill();
  this->live.basis.m = 5;
  const auto backup = this->live.backupVectors(BackupMode::vectors);
  ASSERT_EQ(backup.entries.size(), 4U);
  EXPECT_EQ(backup.entries[0].vector.dimension(), 5);
  EXPECT_EQ(backup.entries[0].vector[5], TypeParam(0));
  EXPECT_EQ(backup.collected.begin()->dimension(), 5);
}

TYPED_TEST(LatticeBackupOver, CoordinatesFollowTheBasis) {
  this->use(climb);
  this->fill();
  auto& lattice = this->live;
  lattice.setScale(1, TypeParam(3));
  lattice.found.bestTarget.clear();
  auto backup = lattice.backupVectors(BackupMode::coordinates);
  // The constants, x and two y.
  EXPECT_EQ(textOf<Vector<TypeParam>>(backup.entries[1].vector), "[ 1 1 2 ]");
  // x and y change places in the basis.
  test::exchangeRows(lattice, 2, 3);
  lattice.restoreVectors(std::move(backup), BackupMode::coordinates);
  ASSERT_EQ(lattice.found.solutions.dimension(), 1);
  EXPECT_EQ(textOf(this->pointOf(lattice.found.solutions[1])), "[ 2 1 ]");
}

TYPED_TEST(LatticeBackupOver, VectorWithoutCoordinatesIsDropped) {
  this->use(climb);
  this->fill();
  auto& lattice = this->live;
  lattice.found.bestVector[1] += TypeParam(1);
  (*lattice.found.collected.first())[1] += TypeParam(1);
  const auto backup = lattice.backupVectors(BackupMode::coordinates);
  EXPECT_EQ(backup.entries.size(), 3U);
  EXPECT_EQ(backup.collected.count(), 0);
  EXPECT_EQ(backup.chosen.count(), 1);
}

TYPED_TEST(LatticeBackupOver, CoordinatesOfAnotherBasisAreDropped) {
  this->use(climb);
  this->fill();
  auto& lattice = this->live;
  auto backup = lattice.backupVectors(BackupMode::coordinates);
  lattice.resize(2, 0, Vectors::discard);
  lattice.restoreVectors(std::move(backup), BackupMode::coordinates);
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
  EXPECT_FALSE(lattice.found.bestVector.isSet());
}

TYPED_TEST(LatticeBackupOver, HomogeneousVectorStandsForNoPoint) {
  this->use(climb);
  this->fill();
  this->live.found.bestVector[this->live.basis.m] = TypeParam(0);
  const auto backup = this->live.backupVectors(BackupMode::points);
  EXPECT_EQ(backup.entries.size(), 3U);
}

TYPED_TEST(LatticeBackupOver, PointOfABrokenCongruenceIsDropped) {
  this->use(congruence);
  auto& lattice = this->live;
  lattice.checkSolution(this->image({TypeParam(2), TypeParam(2)}), Space::raw, 4, Announce::silent);
  auto backup = lattice.backupVectors(BackupMode::points);
  ASSERT_EQ(backup.entries.size(), 1U);
  backup.entries[0].vector[1] = TypeParam(3);
  backup.entries.push_back(backup.entries[0]);
  backup.entries[1].vector[2] = TypeParam(1);
  lattice.restoreVectors(std::move(backup), BackupMode::points);
  ASSERT_EQ(lattice.found.solutions.dimension(), 1);
  EXPECT_EQ(textOf(this->pointOf(lattice.found.solutions[1])), "[ 3 1 ]");
}

TYPED_TEST(LatticeBackupOver, NegativeSlackIsOnlyAnEntry) {
  // x + y at least 4.
  this->use("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 4 ] [ inf ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  auto& lattice = this->live;
  const Vector<TypeParam> below = this->image({TypeParam(1), TypeParam(1)});
  EXPECT_EQ(lattice.checkSolution(below, Space::raw, 3, Announce::silent), 0U);
  ASSERT_TRUE(lattice.found.bestVector.isSet());
  auto backup = lattice.backupVectors(BackupMode::points);
  lattice.restoreVectors(std::move(backup), BackupMode::points);
  EXPECT_EQ(textOf<Vector<TypeParam>>(lattice.found.bestVector), textOf(below));
}

TYPED_TEST(LatticeBackupOver, ColumnsLeaveTheVectors) {
  this->use(congruence, LatticeStage::fullWithModuli);
  auto& lattice = this->live;
  lattice.checkSolution(this->image({TypeParam(2), TypeParam(2)}), Space::raw, 4, Announce::silent);
  ASSERT_EQ(lattice.found.solutions.dimension(), 1);
  const auto backup = lattice.backupVectors(BackupMode::columns, 1, 3);
  EXPECT_EQ(this->entriesText(backup), "3:[ -1 -1 1 ]@4 ");
}

TYPED_TEST(LatticeBackupOver, VectorThatMissesAnEquationDoesNotLoseIt) {
  this->use(congruence, LatticeStage::equations);
  auto& lattice = this->live;
  const Vector<TypeParam> hit = this->image({TypeParam(2), TypeParam(2)});
  lattice.offerBest(hit, 4);
  EXPECT_EQ(this->entriesText(lattice.backupVectors(BackupMode::columns, 1, 1)),
            "1:" + textOf(Vector<TypeParam>{hit[2], hit[3], hit[4], hit[5]}) + "@4 ");
  lattice.offerBest(this->image({TypeParam(2), TypeParam(1)}), 4);
  ASSERT_TRUE(lattice.found.bestVector.isSet());
  EXPECT_EQ(this->entriesText(lattice.backupVectors(BackupMode::columns, 1, 1)), "");
}

TYPED_TEST(LatticeBackupOver, WorseSolutionsComeBackBehindTheBestTarget) {
  this->use(climb);
  this->fill();
  auto backup = this->live.backupVectors(BackupMode::points);
  EXPECT_EQ(this->live.found.bestTarget.targetNorm, NumberTraits<TypeParam>::infinity());
  this->live.restoreVectors(std::move(backup), BackupMode::points);
  // In a search the first one would have been turned away.
  EXPECT_EQ(this->live.found.solutions.dimension(), 2);
}

TYPED_TEST(LatticeBackupOver, BestTargetThatIsNoSolutionIsFatal) {
  this->use(climb);
  this->fill();
  auto backup = this->live.backupVectors(BackupMode::vectors);
  backup.entries[1].vector = BackupVector<TypeParam>();
  static_cast<Vector<TypeParam>&>(backup.entries[1].vector) =
      this->image({TypeParam(5), TypeParam(5)});
  EXPECT_FAILS_WITH(this->live.restoreVectors(std::move(backup), BackupMode::vectors),
                    "This case should not happen between a backup / restore!");
}

TYPED_TEST(LatticeBackupOver, StarsOfTheMeantimeStandBehind) {
  this->use(climb);
  this->fill();
  auto& lattice = this->live;
  auto backup = lattice.backupVectors(BackupMode::vectors);
  lattice.file.stars.resize(1, false);
  lattice.file.stars[1] = Star<TypeParam>{TypeParam(7)};
  lattice.restoreVectors(std::move(backup), BackupMode::vectors);
  ASSERT_EQ(lattice.file.stars.dimension(), 2);
  EXPECT_EQ(textOf(lattice.file.stars[1]), "[ 5 ]");
  EXPECT_EQ(textOf(lattice.file.stars[2]), "[ 7 ]");
}

TYPED_TEST(LatticeBackupOver, CollectedVectorsThatBecameInconsistentAreDropped) {
  this->use(climb);
  this->fill();
  auto backup = this->live.backupVectors(BackupMode::vectors);
  (*backup.collected.first())[1] += TypeParam(1);
  this->live.restoreVectors(std::move(backup), BackupMode::vectors);
  EXPECT_EQ(this->live.found.collected.count(), 0);
  EXPECT_EQ(this->live.found.chosen.count(), 1);
}

TYPED_TEST(LatticeBackupOver, FirstSecondStaysTheTimeOfDiscovery) {
  for (const BackupMode mode : {BackupMode::vectors, BackupMode::coordinates, BackupMode::points}) {
    SCOPED_TRACE(static_cast<int>(mode));
    this->live.found.collected.clear();
    this->live.found.chosen.clear();
    this->live.run.runVariables[MainMutexVariable::startTime].set("0");
    this->use(climb);
    this->fillInFirstSecond();
    auto backup = this->live.backupVectors(mode);
    this->live.restoreVectors(std::move(backup), mode);
    this->expectFirstSecond();
  }
}

// Columns go by removeColumns() only, which brings the vectors back.
TYPED_TEST(LatticeBackupOver, FirstSecondStaysWhereColumnsGo) {
  this->use(congruence, LatticeStage::fullWithModuli);
  auto& lattice = this->live;
  lattice.offerBest(this->image({TypeParam(7), TypeParam(0)}), 0);
  lattice.checkSolution(this->image({TypeParam(2), TypeParam(2)}), Space::raw, 0, Announce::silent);
  lattice.run.runVariables[MainMutexVariable::startTime].set(
      std::to_string(std::time(nullptr) - 1000));
  lattice.removeColumns(ColumnsOf::moduli, 1, 3);
  ASSERT_TRUE(lattice.found.bestVector.isSet());
  EXPECT_EQ(lattice.found.bestVector.time, 0);
  ASSERT_EQ(lattice.found.solutions.dimension(), 1);
  EXPECT_EQ(lattice.found.solutions[1].time, 0);
}

TYPED_TEST(LatticeBackupOver, FoundBehindARestoreIsFoundNow) {
  this->use(climb);
  this->fillInFirstSecond();
  auto backup = this->live.backupVectors(BackupMode::points);
  this->live.restoreVectors(std::move(backup), BackupMode::points);
  this->live.checkSolution(this->image({TypeParam(4), TypeParam(2)}), Space::raw, 0,
                           Announce::silent);
  ASSERT_EQ(this->live.found.solutions.dimension(), 3);
  EXPECT_GE(this->live.found.solutions[3].time, 1000);
}

TYPED_TEST(LatticeBackupOver, ColumnsOfAnotherLengthAreDropped) {
  this->use(congruence, LatticeStage::fullWithModuli);
  auto& lattice = this->live;
  lattice.offerBest(this->image({TypeParam(7), TypeParam(0)}), 3);
  lattice.checkSolution(this->image({TypeParam(2), TypeParam(2)}), Space::raw, 4, Announce::silent);
  ASSERT_TRUE(lattice.found.bestVector.isSet());
  lattice.found.bestVector.resize(lattice.basis.m - 1, false);
  EXPECT_EQ(this->entriesText(lattice.backupVectors(BackupMode::columns, 1, 3)),
            "3:[ -1 -1 1 ]@4 ");
  lattice.offerBest(this->image({TypeParam(7), TypeParam(0)}), 3);
  lattice.found.bestVector.resize(lattice.basis.m + 1, false);
  EXPECT_EQ(this->entriesText(lattice.backupVectors(BackupMode::columns, 1, 3)), "");
}

using LatticeBackup = LatticeBackupOver<long double>;

TEST_F(LatticeBackup, RestoringEndsWithAnException) {
  this->use(climb);
  this->fill();
  auto backup = live.backupVectors(BackupMode::vectors);
  backup.entries[2].vector[1] = 2e9L;
  EXPECT_EQ(test::messageOf<PrecisionException>(
                [&] { live.restoreVectors(std::move(backup), BackupMode::vectors); }),
            "lat_vec overflow");
  EXPECT_FALSE(live.run.restoring);
}

}  // namespace
}  // namespace starsift

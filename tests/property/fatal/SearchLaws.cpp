// What a search in the lattice of a small problem files, and what becomes of it when the
// lattice is made anew: judged over GMP's rationals.
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <set>
#include <string>

#include "PreparedProblems.h"
#include "search/NearbySearch.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using oracle::Point;
using test::checkOverPrepared;
using test::LatticeOfBoth;
using test::LatticeOver;
using test::pointOf;
using test::problemCount;
using test::Silence;
using test::SmallProblem;
using test::vectorOf;

template <class Way>
class SearchBy : public testing::Test {};
using Ways = testing::Types<LatticeOver<long double>, LatticeOver<QQ>, LatticeOfBoth>;
TYPED_TEST_SUITE(SearchBy, Ways);

/// The point of a filed vector.
template <class T>
Point filedPoint(const Lattice<T, long double>& lattice, const Vector<T>& vector) {
  Vector<T> x;
  RC_ASSERT(lattice.lat2opt(vector, x, Constants::insert, Slacks::omit, Orientation::either) ==
            T(1));
  return pointOf(x);
}

/// The points of solutions and stars.
template <class T>
std::set<std::string> pointsOf(const Lattice<T, long double>& lattice) {
  std::set<std::string> points;
  for (const FiledSolution<T>& solution : lattice.found.solutions)
    points.insert(oracle::pointText(filedPoint<T>(lattice, solution)));
  for (const Star<T>& star : lattice.file.stars) points.insert(oracle::pointText(pointOf<T>(star)));
  return points;
}

template <class T>
void checkFiled(Lattice<T, long double>& lattice, const oracle::Problem& problem) {
  const std::set<std::string> filed = pointsOf(lattice);
  for (const FiledSolution<T>& solution : lattice.found.solutions)
    RC_ASSERT(oracle::solves(problem, filedPoint<T>(lattice, solution)));
  if (lattice.found.bestTarget.isSet())
    RC_ASSERT(oracle::solves(problem, filedPoint<T>(lattice, lattice.found.bestTarget)));
  lattice.sol2star();
  RC_ASSERT(pointsOf(lattice) == filed);
  for (const Star<T>& star : lattice.file.stars) {
    const auto verdict = oracle::judge(problem, pointOf<T>(star));
    RC_ASSERT(verdict.has_value());
    using Exact = NumberConversion<QQ, T>;
    RC_ASSERT(Exact::convert(star.targetNorm) == test::toQQ(verdict->targetNorm));
    RC_ASSERT(Exact::convert(star.slackNorm) == test::toQQ(verdict->slackNorm));
  }
}

TYPED_TEST(SearchBy, FilesOnlySolutions) {
  int filed = 0;
  checkOverPrepared<TypeParam>(
      [&]<class T>(Lattice<T, long double>& lattice, const SmallProblem& small) {
        const Silence silence;
        lattice.reduce(0);
        NearbySearch(lattice).run();
        if (lattice.found.solutions.dimension() > 0) ++filed;
        checkFiled(lattice, small.problem);
      });
  EXPECT_GE(filed, problemCount / 8);
}

/// Files points, and puts the last of them among the stars.
template <class T>
void keepAll(Lattice<T, long double>& lattice, const std::vector<Point>& points) {
  test::fileAll(lattice, points);
  if (points.empty()) return;
  lattice.file.stars.resize(1, false);
  Star<T>& star = lattice.file.stars[1];
  star = Star<T>();
  static_cast<Vector<T>&>(star) = vectorOf<T>(points.back());
  star.time = 5;
  RC_ASSERT(lattice.checkStars());
}

template <class T>
void regenerate(Lattice<T, long double>& lattice) {
  lattice.run.terminationSwitch = true;
  lattice.params.stopping = true;
  lattice.params.variate.setTextSilently("1");
  try {
    lattice.restartHandling(Outcome::unfinished);
    RC_FAIL("no restart");
  } catch (const RestartException& exception) {
    RC_ASSERT(exception.message() == "Lattice was regenerated");
  }
}

TYPED_TEST(SearchBy, LosesNothingWhenTheLatticeIsMadeAnew) {
  checkOverPrepared<TypeParam>(
      []<class T>(Lattice<T, long double>& lattice, const SmallProblem& small) {
        const Silence silence;
        const std::vector<Point> some = test::someStars(small.problem);
        keepAll(lattice, some);
        const std::set<std::string> known = pointsOf(lattice);
        const Index solutions = lattice.found.solutions.dimension();
        const bool hasTarget = lattice.found.bestTarget.isSet();
        const T norm = lattice.found.bestTarget.targetNorm;
        regenerate(lattice);
        RC_ASSERT(lattice.run.restarts == 1);
        const std::set<std::string> after = pointsOf(lattice);
        RC_ASSERT(std::includes(after.begin(), after.end(), known.begin(), known.end()));
        RC_ASSERT(lattice.found.solutions.dimension() >= solutions);
        RC_ASSERT(lattice.found.bestTarget.isSet() >= hasTarget);
        if (hasTarget) RC_ASSERT(lattice.found.bestTarget.targetNorm <= norm);
        RC_ASSERT(lattice.run.terminationSwitch);
        checkFiled(lattice, small.problem);
      });
}

TYPED_TEST(SearchBy, LosesNothingWhenTheLatticeIsPreparedAgain) {
  checkOverPrepared<TypeParam>(
      []<class T>(Lattice<T, long double>& lattice, const SmallProblem& small) {
        const Silence silence;
        keepAll(lattice, test::someStars(small.problem));
        lattice.reduce(0);
        NearbySearch(lattice).run();
        const std::set<std::string> known = pointsOf(lattice);
        RC_ASSERT(lattice.prepareLattice());
        const std::set<std::string> after = pointsOf(lattice);
        RC_ASSERT(std::includes(after.begin(), after.end(), known.begin(), known.end()));
        checkFiled(lattice, small.problem);
      });
}

/// The points of a file of stars.
std::set<std::string> pointsIn(const std::string& path, const SmallProblem& small) {
  Lattice<QQ, long double> reader;
  reader.setProblem(small.record());
  reader.file.setPaths({"", path, ""});
  reader.readStarsExactly(StarReading::append);
  return pointsOf(reader);
}

TYPED_TEST(SearchBy, WritesEverythingThatIsFiled) {
  const test::ScratchDir dir;
  int written = 0;
  checkOverPrepared<TypeParam>(
      [&]<class T>(Lattice<T, long double>& lattice, const SmallProblem& small) {
        const Silence silence;
        keepAll(lattice, test::someStars(small.problem));
        const std::set<std::string> known = pointsOf(lattice);
        if (known.empty() || ++written % 8 != 0) return;
        lattice.setFileNames(dir.file("a.sol"));
        lattice.run.outputSwitch = true;
        lattice.writeResults();
        RC_ASSERT(pointsOf(lattice) == known);
        RC_ASSERT(pointsIn(dir.file("a.sol"), small) == known);
        RC_ASSERT(dir.names() == std::vector<std::string>({"a.lat", "a.sol"}));
      });
  EXPECT_GE(written, problemCount / 8);
}

constexpr int mostRestarts = 20;

/// Reduces, and makes the lattice anew, until something is filed. The number of lattices that
/// took, 0 where none was enough.
template <class T>
int triedLattices(Lattice<T, long double>& lattice) {
  for (int tried = 1; tried <= mostRestarts; ++tried) {
    lattice.reduce(0);
    NearbySearch(lattice).run();
    if (lattice.found.solutions.dimension() > 0) return tried;
    regenerate(lattice);
  }
  return 0;
}

bool hasGoalToReach(const oracle::Problem& problem) {
  return std::any_of(problem.targets.begin(), problem.targets.end(),
                     [](const oracle::Target& target) { return target.goal.infinite == 0; });
}

/// How many problems with a solution there were, and for how many one was filed.
struct Finds {
  int solvable = 0;
  int found = 0;

  void count(bool isFound) {
    ++solvable;
    if (isFound) ++found;
  }
  bool isAtLeast(int percent) const { return found * 100 >= solvable * percent; }
  std::string text() const {
    return std::to_string(found) + " of " + std::to_string(solvable) + " found";
  }
};

// A reduction files what it comes across. With goals it comes across points near the goal, as
// deviations weigh more than all the range of a variable, in the box or not; then the point next
// to these within the bounds has to do.
TYPED_TEST(SearchBy, FindsASolutionOfNearlyEveryProblemThatHasOne) {
  Finds all;
  Finds withoutGoal;
  Finds withGoal;
  checkOverPrepared<TypeParam>([&](auto& lattice, const SmallProblem& small) {
    const Silence silence;
    if (!oracle::firstSolution(small.problem, test::pointsAround(small.problem))) return;
    const bool isFound = triedLattices(lattice) > 0;
    all.count(isFound);
    (hasGoalToReach(small.problem) ? withGoal : withoutGoal).count(isFound);
  });
  std::cout << "without goals to reach " << withoutGoal.text() << ", with some " << withGoal.text()
            << "\n";
  EXPECT_TRUE(all.isAtLeast(95)) << all.text();
  EXPECT_TRUE(withoutGoal.isAtLeast(95)) << withoutGoal.text();
  EXPECT_TRUE(withGoal.isAtLeast(90)) << withGoal.text();
}

TYPED_TEST(SearchBy, FilesAPointWhateverItsDeviationsHaveInCommon) {
  // One constant: there is nothing to find but the deviations from two goals.
  const oracle::Problem problem = {{{{0, -2}, {0}}, {{0, -5}, {1}}},
                                   {{{0}, 0, 0}, {{0}, 0, 0}},
                                   {},
                                   {{0, -2}},
                                   {{0, -2}},
                                   {2},
                                   {{0, 0}, {1, 0}}};
  const std::string report =
      TypeParam::carry({problem, true}, [](auto& lattice, const SmallProblem& /*small*/) {
        const Silence silence;
        lattice.reduce(0);
        NearbySearch(lattice).run();
        EXPECT_EQ(lattice.found.solutions.dimension(), 1);
      });
  EXPECT_EQ(report, "");
}

}  // namespace
}  // namespace starsift

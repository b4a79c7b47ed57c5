// Lattices of helper threads beside a search that finds nothing by itself.
#include "app/HelperLattices.h"

#include <gtest/gtest.h>

#include <thread>

#include "app/StarStore.h"
#include "support/fixtures/PreparedSearch.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = StatusLine::Clock;

// x + 2 y between 2 and 9, both from 0 to 5; with a goal, as great as they can be.
constexpr std::string_view strip =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
constexpr std::string_view greatest =
    "[ inf ] [ [ 1 1 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

class HelperLatticesTest : public test::PreparedSearch {
 protected:
  /// Prepares a search for one solution, or for the best one.
  void begin(std::string_view problem, const std::vector<std::string>& parameters = {}) {
    prepare(problem, parameters);
    problem_ = test::problemFrom(problem);
    search_.withLive([](auto& lattice) { lattice.params.sol = 1; });
    store_.emplace(search_);
    stars_.emplace(search_, *store_);
  }

  HelperLattices helpers(unsigned threads, Clock::duration elapsed, bool wantsBest = false) {
    watch_.emplace(search_, line_, Clock::now() - elapsed);
    return {search_, problem_, *watch_, *stars_, wantsBest, threads};
  }

  /// Looks until it is over, or for some time.
  static bool looksUntilOver(HelperLattices& helpers, milliseconds time) {
    for (const auto end = Clock::now() + time; Clock::now() < end;) {
      if (helpers.look()) return true;
      std::this_thread::sleep_for(milliseconds(1));
    }
    return false;
  }

  Vanu<QQ> problem_;
  StatusLine line_{nullptr, Clock::now()};
  std::optional<SearchWatch> watch_;
  std::optional<StarStore> store_;
  std::optional<DirectStars> stars_;
};

constexpr milliseconds longTime = seconds(60);
constexpr milliseconds shortTime(50);

TEST_F(HelperLatticesTest, FindTheSolutionThatIsLookedFor) {
  begin(strip);
  HelperLattices lattices = helpers(3, seconds(2));
  EXPECT_TRUE(looksUntilOver(lattices, longTime));
  EXPECT_EQ(stars_->count(), 1);
  // A second one isn't taken.
  lattices.end();
  EXPECT_EQ(stars_->count(), 1);
  EXPECT_EQ(store_->starCount(), 1);
}

TEST_F(HelperLatticesTest, FindBetterAndBetterSolutions) {
  begin(greatest);
  search_.seekBest();
  HelperLattices lattices = helpers(2, seconds(2), true);
  while (stars_->leastKnownNorm().value_or(QQ(0)) > QQ(-7)) EXPECT_FALSE(lattices.look());
  lattices.end();
  EXPECT_EQ(stars_->leastKnownNorm(), QQ(-7));
}

TEST_F(HelperLatticesTest, TakeOnlyWhatIsBetterThanAllThatIsKnown) {
  begin(greatest);
  search_.seekBest();
  find({5, 2});
  HelperLattices lattices = helpers(2, seconds(2), true);
  EXPECT_FALSE(looksUntilOver(lattices, shortTime));
  lattices.end();
  EXPECT_EQ(stars_->count(), 0);
}

TEST_F(HelperLatticesTest, TakeWhatIsLeftAtTheEnd) {
  begin(strip);
  HelperLattices lattices = helpers(2, seconds(2));
  // Starts the threads; seldom one of them has found it by then.
  lattices.look();
  std::this_thread::sleep_for(seconds(1));
  lattices.end();
  EXPECT_EQ(stars_->count(), 1);
}

TEST_F(HelperLatticesTest, AreNotForAShortSearch) {
  begin(strip);
  HelperLattices lattices = helpers(2, seconds(0));
  EXPECT_FALSE(looksUntilOver(lattices, shortTime));
}

TEST_F(HelperLatticesTest, AreNotForOneThread) {
  begin(strip);
  HelperLattices lattices = helpers(1, seconds(2));
  EXPECT_FALSE(looksUntilOver(lattices, shortTime));
}

TEST_F(HelperLatticesTest, AreNotForANumberOfPasses) {
  begin(strip, {"--iters=5"});
  HelperLattices lattices = helpers(2, seconds(2));
  EXPECT_FALSE(looksUntilOver(lattices, shortTime));
}

TEST_F(HelperLatticesTest, AreNotWithoutRandomChanges) {
  begin(strip, {"--variate=0"});
  HelperLattices lattices = helpers(2, seconds(2));
  EXPECT_FALSE(looksUntilOver(lattices, shortTime));
}

TEST_F(HelperLatticesTest, AreNotForFurtherSolutions) {
  begin(strip);
  find({1, 1});
  HelperLattices lattices = helpers(2, seconds(2));
  EXPECT_FALSE(looksUntilOver(lattices, shortTime));
}

TEST_F(HelperLatticesTest, GoOnAfterAPause) {
  begin(greatest);
  search_.seekBest();
  HelperLattices lattices = helpers(2, seconds(2), true);
  // Before they are started, and after that.
  for (int i = 0; i < 2; ++i) {
    const HelperLattices::Pause pause(lattices);
    EXPECT_FALSE(lattices.look());
  }
  while (stars_->leastKnownNorm().value_or(QQ(0)) > QQ(-7)) EXPECT_FALSE(lattices.look());
}

}  // namespace
}  // namespace starsift

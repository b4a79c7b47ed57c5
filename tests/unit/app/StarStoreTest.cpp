// The solution file of a search, and what of it stays with the lattice.
#include "app/StarStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <sstream>
#include <type_traits>

#include "numbers/Conversion.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/PreparedSearch.h"
#include "support/fixtures/StarRun.h"

namespace starsift {
namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Names = std::vector<std::string>;

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr std::string_view band =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// The same with x largest.
constexpr std::string_view climb =
    "[ inf ] [ [ 1 0 ] ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

class StarStoreTest : public test::PreparedSearch {
 protected:
  /// A search that has found nothing yet, with `stars` in p.sol.
  void search(std::string_view problem, std::string_view stars = "") {
    if (!stars.empty()) dir_.write("p.sol", stars);
    prepare(problem);
  }

  StarStore store() {
    return StarStore(search_, [this] { return now_ += reading_; });
  }

  /// Saves as if that took a second.
  void saveSlowly(StarStore& stars) {
    reading_ = std::chrono::seconds(1);
    stars.trySave(search_);
    reading_ = {};
  }

  std::string paramsText() const {
    std::ostringstream text;
    text << search_.params();
    return text.str();
  }

  StarStore::Clock::time_point now_{};
  /// What it takes to look at the clock once more.
  StarStore::Clock::duration reading_{};
};

TEST_F(StarStoreTest, IsDueWhenThereIsASolutionThatItHasNot) {
  search(band);
  StarStore stars = store();
  EXPECT_FALSE(stars.isDue(search_));
  find({1, 4}, 3);
  EXPECT_TRUE(stars.isDue(search_));
  stars.save(search_);
  EXPECT_FALSE(stars.isDue(search_));
  find({2, 3}, 4);
  EXPECT_TRUE(stars.isDue(search_));
}

TEST_F(StarStoreTest, PausesTenTimesAsLongAsItWrote) {
  search(band);
  StarStore stars = store();
  find({1, 4}, 3);
  saveSlowly(stars);
  find({2, 3}, 4);
  const auto end = now_;
  now_ = end + seconds(10) - nanoseconds(1);
  EXPECT_FALSE(stars.isDue(search_));
  now_ = end + seconds(10);
  EXPECT_TRUE(stars.isDue(search_));
}

TEST_F(StarStoreTest, LeavesWhatWouldTakeTooLongToTheEndOfTheSearch) {
  search(band);
  StarStore stars = store();
  find({1, 4}, 3);
  saveSlowly(stars);
  find({2, 3}, 4);
  now_ += seconds(10);
  stars.setEnd(now_ + seconds(1) + nanoseconds(1));
  EXPECT_TRUE(stars.isDue(search_));
  stars.setEnd(now_ + seconds(1));
  EXPECT_FALSE(stars.isDue(search_));
}

TEST_F(StarStoreTest, LeavesNoStarsInTheLatticeThatIsSearched) {
  search(band, "[ 5 1 ]\n");
  StarStore stars = store();
  find({1, 4}, 3);
  stars.save(search_);
  EXPECT_FALSE(search_.hasStars());
  EXPECT_EQ(search_.solutionCount(), 1);
}

TEST_F(StarStoreTest, WritesWhatIsFoundBesideWhatIsKnown) {
  search(band, "[ 5 1 ] | 0 | [ ] | 0 | 7 | other | 1.0\n");
  StarStore stars = store();
  find({1, 4}, 3);
  stars.save(search_);
  EXPECT_EQ(solFile(), "[ 1 4 ] | 0 | [ ] | 0 | 3 | " + paramsText() +
                           " | 2.4.2\n[ 5 1 ] | 0 | [ ] | 0 | 7 | other | 1.0\n");
}

TEST_F(StarStoreTest, DropsWrongStars) {
  search(band, "[ 5 5 ]\n[ 5 1 ]\n");
  StarStore stars = store();
  find({1, 4}, 3);
  stars.save(search_);
  EXPECT_THAT(solFile(), Not(HasSubstr("[ 5 5 ]")));
  EXPECT_THAT(solFile(), HasSubstr("[ 5 1 ]"));
}

TEST_F(StarStoreTest, TouchesNoFileBeforeItSaves) {
  search(band, "[ 5 5 ]\n[ 5 1 ]\n");
  const StarStore stars = store();
  EXPECT_EQ(solFile(), "[ 5 5 ]\n[ 5 1 ]\n");
}

TEST_F(StarStoreTest, DoesNotReadTheFileAtTheStartOfABenchmark) {
  dir_.write("p.sol", "[ 5 1 ]\n");
  prepare(band, {"--bench=0.5"});
  StarStore stars = store();
  std::ostringstream report;
  EXPECT_FALSE(stars.report(report));
  EXPECT_EQ(solFile(), "[ 5 1 ]\n");
}

TEST_F(StarStoreTest, ReadsTheFileAtTheStartOfAnyOtherSearch) {
  dir_.write("p.sol", "[ 5 1 ]\n");
  prepare(band, {"--bench=-1"});
  StarStore stars = store();
  std::ostringstream report;
  EXPECT_TRUE(stars.report(report));
  EXPECT_THAT(report.str(), HasSubstr("x = [ 5 1 ]"));
}

TEST_F(StarStoreTest, WritesWhatStarsiftWouldMakeOfIt) {
  search(climb, "[ 5 1 ] | 0 | [ 0 ] | 0 | 7 | other | 1.0\n[ 1/2 4 ]\n[ 1 4 ]\n");
  StarStore stars = store();
  find({1, 4}, 3);
  find({5, 1}, 4);
  stars.save(search_);
  const std::string written = solFile();
  EXPECT_THAT(written, HasSubstr("other"));
  const std::string report = test::siftedReport(dir_.file("p.sol"));
  EXPECT_EQ(solFile(), written);

  std::ostringstream own;
  stars.save(search_);
  EXPECT_TRUE(stars.report(own));
  EXPECT_EQ(own.str(), report);
  EXPECT_EQ(solFile(), written);
}

TEST_F(StarStoreTest, KeepsAStarThatIsFoundAgainWithOtherParameters) {
  search(band, "[ 1 4 ] | 0 | [ ] | 0 | 7 | other | 1.0\n");
  StarStore stars = store();
  find({1, 4}, 3);
  stars.save(search_);
  EXPECT_EQ(solFile(), "[ 1 4 ] | 0 | [ ] | 0 | 3 | " + paramsText() +
                           " | 2.4.2\n[ 1 4 ] | 0 | [ ] | 0 | 7 | other | 1.0\n");
}

TEST_F(StarStoreTest, LosesNothingWhenItSavesAgain) {
  search(climb, "[ 0 3 ]\n");
  StarStore stars = store();
  find({1, 4}, 3);
  stars.save(search_);
  const std::string first = solFile();
  stars.save(search_);
  EXPECT_EQ(solFile(), first);
  find({5, 1}, 4);
  stars.save(search_);
  const std::string second = solFile();
  EXPECT_THAT(second, StartsWith("[ 5 1 ] | -5 | [ 5 ] | 0 | 4 | "));
  EXPECT_EQ(second.substr(second.find('\n') + 1), first);
}

TEST_F(StarStoreTest, KeepsWhatTheSearchHasLost) {
  search(band);
  StarStore stars = store();
  find({1, 4}, 3);
  stars.save(search_);
  const std::string written = solFile();
  search_.standard().found.solutions.clear();
  stars.save(search_);
  EXPECT_EQ(solFile(), written);
}

/// Files a point in the standard lattice, has it saved and loses precision; files another one in
/// the exact lattice.
struct RepeatedStep {
  void operator()(YLattice<long double>::Standard& lattice) const {
    file(lattice, Vector<long double>{1, 4});
    save();
    throw PrecisionException("lost");
  }
  void operator()(YLattice<long double>::Exact& lattice) const {
    file(lattice, Vector<QQ>{QQ(2), QQ(3)});
  }
  template <class T>
  static void file(Lattice<T, long double>& lattice, const Vector<T>& point) {
    Vector<T> vector;
    lattice.opt2lat(point, vector, Space::raw, T(1));
    lattice.checkSolution(vector, Space::raw, 3, Announce::silent);
  }
  std::function<void()> save;
};

TEST_F(StarStoreTest, MissesNothingThatARepeatedStepFinds) {
  search(band);
  StarStore stars = store();
  search_.runStep(RepeatedStep{[&] { stars.save(search_); }});
  ASSERT_EQ(search_.solutionCount(), 1);
  EXPECT_TRUE(stars.isDue(search_));
  stars.save(search_);
  EXPECT_THAT(solFile(), HasSubstr("[ 1 4 ]"));
  EXPECT_THAT(solFile(), HasSubstr("[ 2 3 ]"));
}

TEST_F(StarStoreTest, SolutionsOfAnotherProblemAreFatal) {
  search(band);
  StarStore stars = store();
  find({1, 4}, 3);
  search_.standard().file.editProblem().rx[1] = 4;
  EXPECT_FAILS_WITH(stars.save(search_), "The stars solve another problem");
}

TEST_F(StarStoreTest, FileThatCannotBeWrittenIsNoEnd) {
  search(band);
  StarStore stars = store();
  std::filesystem::create_directory(dir_.file("p.sol"));
  find({1, 4}, 3);
  testing::internal::CaptureStderr();
  stars.save(search_);
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(std::filesystem::is_directory(dir_.file("p.sol")));
  ASSERT_EQ(dir_.names().size(), 3U);
  const std::string beside = dir_.names().back();
  EXPECT_THAT(beside, StartsWith("p.sol.found."));
  EXPECT_THAT(dir_.read(beside), StartsWith("[ 1 4 ] | 0 |"));
  EXPECT_THAT(told, HasSubstr("*** The stars of this search are in "));
  EXPECT_THAT(told, HasSubstr(beside));
  std::filesystem::remove(dir_.file("p.sol"));
  find({2, 3}, 4);
  stars.save(search_);
  EXPECT_THAT(solFile(), HasSubstr("[ 1 4 ]"));
  EXPECT_THAT(solFile(), HasSubstr("[ 2 3 ]"));
}

TEST_F(StarStoreTest, TriesAgainAfterASecondWhatItCouldNotWrite) {
  search(band);
  StarStore stars = store();
  std::filesystem::create_directory(dir_.file("p.sol"));
  find({1, 4}, 3);
  stars.trySave(search_);
  EXPECT_EQ(dir_.names(), (Names{"p.opt", "p.sol"}));
  EXPECT_TRUE(stars.hasNews(search_));
  EXPECT_FALSE(stars.isDue(search_));
  now_ += seconds(1);
  EXPECT_TRUE(stars.isDue(search_));
  std::filesystem::remove(dir_.file("p.sol"));
  stars.trySave(search_);
  EXPECT_THAT(solFile(), HasSubstr("[ 1 4 ]"));
  EXPECT_FALSE(stars.hasNews(search_));
}

TEST_F(StarStoreTest, DoesNotWaitForALockInTheMiddleOfASearch) {
  search(band, "[ 5 1 ]\n");
  StarStore stars = store();
  find({1, 4}, 3);
  {
    const SolutionLock lock(dir_.file("p.sol"), Patience::none);
    ASSERT_TRUE(lock.isGranted());
    stars.trySave(search_);
    EXPECT_EQ(solFile(), "[ 5 1 ]\n");
  }
  EXPECT_TRUE(stars.save(search_));
  EXPECT_THAT(solFile(), HasSubstr("[ 1 4 ]"));
}

TEST_F(StarStoreTest, SaysAheadThatItsFileCannotBeWritten) {
  search(band);
  const StarStore stars = store();
  testing::internal::CaptureStderr();
  stars.tellIfReadOnly();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  std::filesystem::create_directory(dir_.file("p.sol"));
  testing::internal::CaptureStderr();
  stars.tellIfReadOnly();
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("can't be written"));
}

TEST_F(StarStoreTest, ReportsThatThereIsNothing) {
  search(band, "[ 5 5 ]\n");
  StarStore stars = store();
  std::ostringstream report;
  stars.save(search_);
  EXPECT_FALSE(stars.report(report));
  EXPECT_EQ(report.str(), "\n");
  EXPECT_EQ(dir_.names(), Names{"p.opt"});
}

// The range of x alone is above 10^9, what a mapping in long double may safely meet.
TEST_F(StarStoreTest, TakesWhatTheLatticeInUseCanNotMap) {
  search("[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 12345678901 5 ]");
  StarStore stars = store();
  const Vector<QQ> point{QQ(1), QQ(4)};
  search_.runStep([&point](auto& lattice) {
    using Entry = std::remove_cvref_t<decltype(lattice.homValue)>;
    Vector<Entry> vector;
    Vector<Entry> x;
    x.convertFrom(point, false);
    lattice.opt2lat(x, vector, Space::raw, Entry(1));
    lattice.checkSolution(vector, Space::raw, 3, Announce::silent);
  });
  ASSERT_FALSE(search_.usesExact());
  ASSERT_EQ(search_.solutionCount(), 1);
  Vector<long double> mapped;
  EXPECT_THROW(search_.standard().lat2opt(search_.standard().found.solutions[1], mapped,
                                          Constants::insert, Slacks::omit, Orientation::either),
               PrecisionException);
  std::ostringstream report;
  stars.save(search_);
  EXPECT_TRUE(stars.report(report));
  EXPECT_THAT(report.str(), HasSubstr("x = [ 1 4 ]"));
  EXPECT_THAT(solFile(), StartsWith("[ 1 4 ] | 0 |"));
}

}  // namespace
}  // namespace starsift

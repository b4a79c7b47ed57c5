#include "files/Report.h"

#include <sstream>

#include "numbers/QQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

template <class T>
class ReportOver : public testing::Test {
 protected:
  static T inf() { return NumberTraits<T>::infinity(); }

  /// Two targets, the first maximised, the second wanted at 4.
  static Vector<T> goals() { return {inf(), T(4)}; }

  static Star<T> star() {
    Star<T> star{T(1), T(0), T(2)};
    star.targetValues = Vector<T>{T(7), T(3)};
    star.targetNorm = T(-6);
    star.slackNorm = T(1);
    star.time = 12;
    return star;
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(ReportOver, LatticeNumbers);

TEST(TimeText, OfNothingIsInSeconds) {
  EXPECT_EQ(timeText(0), "0 sec(s)");
}

TEST(TimeText, OfOneSecond) {
  EXPECT_EQ(timeText(1), "1 sec(s)");
}

TEST(TimeText, BelowOneMinuteIsInSeconds) {
  EXPECT_EQ(timeText(59), "59 sec(s)");
}

TEST(TimeText, OfOneMinute) {
  EXPECT_EQ(timeText(60), "1:00 min(s):sec(s)");
}

TEST(TimeText, PadsSecondsBehindMinutes) {
  EXPECT_EQ(timeText(65), "1:05 min(s):sec(s)");
}

TEST(TimeText, BelowOneHourIsInMinutes) {
  EXPECT_EQ(timeText(3599), "59:59 min(s):sec(s)");
}

TEST(TimeText, OfOneHour) {
  EXPECT_EQ(timeText(3600), "1:00:00 hour(s):min(s):sec(s)");
}

TEST(TimeText, PadsMinutesBehindHours) {
  EXPECT_EQ(timeText(10 * 3600 + 5 * 60 + 7), "10:05:07 hour(s):min(s):sec(s)");
}

TEST(TimeText, BelowOneDayIsInHours) {
  EXPECT_EQ(timeText(86399), "23:59:59 hour(s):min(s):sec(s)");
}

TEST(TimeText, OfOneDay) {
  EXPECT_EQ(timeText(86400), "1:00:00:00 day(s):hour(s):min(s):sec(s)");
}

TEST(TimeText, OfADayAndTenHours) {
  EXPECT_EQ(timeText(122400), "1:10:00:00 day(s):hour(s):min(s):sec(s)");
}

TEST(TimeText, PadsHoursBehindDays) {
  EXPECT_EQ(timeText(2 * 86400 + 3 * 3600 + 4 * 60 + 5), "2:03:04:05 day(s):hour(s):min(s):sec(s)");
}

TEST(TimeText, OfTheLargestTime) {
  EXPECT_EQ(timeText(~std::uint64_t{0}), "213503982334601:07:00:15 day(s):hour(s):min(s):sec(s)");
}

TYPED_TEST(ReportOver, StarShowsItsValuesWithTheirGoals) {
  EXPECT_EQ(starReport(this->star(), this->goals()),
            "x = [ 1 0 2 ]\n\nTarget values: [ 7↑ 3→4 ]\nTarget Norm: -6\nSlack Norm: 1\n"
            "Found after: 12 sec(s)\n");
}

TYPED_TEST(ReportOver, MinimisedTargetHasAnArrowDown) {
  const Vector<TypeParam> goals{TypeParam(-this->inf()), TypeParam(-4)};
  EXPECT_NE(starReport(this->star(), goals).find("[ 7↓ 3→-4 ]"), std::string::npos);
}

TYPED_TEST(ReportOver, UnknownTimeIsNotShown) {
  Star<TypeParam> star = this->star();
  star.time = unknownTime;
  EXPECT_EQ(starReport(star, this->goals()),
            "x = [ 1 0 2 ]\n\nTarget values: [ 7↑ 3→4 ]\nTarget Norm: -6\nSlack Norm: 1\n");
}

TYPED_TEST(ReportOver, TimeZeroIsShown) {
  Star<TypeParam> star = this->star();
  star.time = 0;
  EXPECT_NE(starReport(star, this->goals()).find("Found after: 0 sec(s)\n"), std::string::npos);
}

TYPED_TEST(ReportOver, SlackNormOfMinusOneShowsTheVectorOnly) {
  Star<TypeParam> star = this->star();
  star.slackNorm = TypeParam(-1);
  EXPECT_EQ(starReport(star, this->goals()), "x = [ 1 0 2 ]\n\n");
}

TYPED_TEST(ReportOver, ProblemWithoutTargetsShowsNoValuesButBothNorms) {
  const Star<TypeParam> star{TypeParam(5)};
  EXPECT_EQ(starReport(star, Vector<TypeParam>()),
            "x = [ 5 ]\n\nTarget values: [ ]\nTarget Norm: 0\nSlack Norm: 0\n");
}

TYPED_TEST(ReportOver, StarWithTooFewValuesIsRefused) {
  const Star<TypeParam> star{TypeParam(5)};
  EXPECT_FAILS_WITH(starReport(star, this->goals()), "Array: index out of range");
}

TYPED_TEST(ReportOver, NoSolutionsAreALineFeed) {
  EXPECT_EQ(solutionsText(Array<Star<TypeParam>>(), this->goals()), "\n");
}

TYPED_TEST(ReportOver, SolutionsAreSeparated) {
  Array<Star<TypeParam>> stars(2);
  stars[1] = this->star();
  stars[2] = this->star();
  const std::string one = starReport(this->star(), this->goals());
  EXPECT_EQ(solutionsText(stars, this->goals()), "\n" + one + "\n---\n\n" + one);
}

TYPED_TEST(ReportOver, SolutionsAreWrittenInPiecesWithoutSeam) {
  Array<Star<TypeParam>> stars(3000);
  std::string expected = "\n";
  for (Index i = 1; i <= stars.dimension(); ++i) {
    stars[i] = this->star();
    stars[i][1] = TypeParam(i);
    expected += (i > 1 ? "\n---\n\n" : "") + starReport(stars[i], this->goals());
  }
  std::ostringstream stream;
  writeSolutions(stream, stars, this->goals());
  EXPECT_GT(expected.size(), 200'000U);
  EXPECT_EQ(stream.str(), expected);
  EXPECT_EQ(solutionsText(stars, this->goals()), expected);
}

TEST(Report, LongDoubleHasSixDigits) {
  Star<long double> star{1234567.5L};
  star.targetNorm = 0.1234567L;
  star.slackNorm = 1e10L;
  EXPECT_EQ(starReport(star, Vector<long double>()),
            "x = [ 1.23457e+06 ]\n\nTarget values: [ ]\nTarget Norm: 0.123457\n"
            "Slack Norm: 1e+10\n");
}

TEST(Report, RationalsAreExact) {
  Star<QQ> star{QQ(5, 2)};
  star.targetValues = Vector<QQ>{QQ(-1, 3)};
  EXPECT_EQ(starReport(star, Vector<QQ>{QQ(7, 3)}),
            "x = [ 2:1/2 ]\n\nTarget values: [ -1/3→2:1/3 ]\nTarget Norm: 0\nSlack Norm: 0\n");
}

TYPED_TEST(ReportOver, StatusOfNothingIsEmpty) {
  EXPECT_EQ(statusText(SearchStatus<TypeParam>()), "");
}

TYPED_TEST(ReportOver, StatusShowsTheBestTarget) {
  SearchStatus<TypeParam> status;
  status.hasTarget = true;
  status.bestTargetNorm = TypeParam(-6);
  status.bestSlackNorm = TypeParam(2);
  status.bestTime = 65;
  EXPECT_EQ(statusText(status),
            "\nT(bestTarget) = -6, S(bestTarget) = 2 -- { 1:05 min(s):sec(s) }\n");
}

TYPED_TEST(ReportOver, StatusWithoutABestTargetHasNoTime) {
  SearchStatus<TypeParam> status;
  status.hasTarget = true;
  EXPECT_EQ(statusText(status), "\nT(bestTarget) = inf, S(bestTarget) = 0\n");
}

TYPED_TEST(ReportOver, StatusShowsTheTimesOfTheFirstThreeSolutions) {
  SearchStatus<TypeParam> status;
  status.solutionTimes.resize(4, false);
  for (Index i = 1; i <= 4; ++i) status.solutionTimes[i] = 10 * i;
  EXPECT_EQ(statusText(status),
            "\nSolutions found: 4\n\n{ The first solution/s was/were found after: 10 sec(s) "
            "20 sec(s) 30 sec(s) }\n");
}

TYPED_TEST(ReportOver, StatusShowsTheTimeOfSeveralSolutionsOnce) {
  SearchStatus<TypeParam> status;
  status.solutionTimes.resize(3, false);
  status.solutionTimes[1] = 7;
  status.solutionTimes[2] = 7;
  status.solutionTimes[3] = 9;
  EXPECT_EQ(statusText(status),
            "\nSolutions found: 3\n\n{ The first solution/s was/were found after: 7 sec(s) "
            "9 sec(s) }\n");
}

TYPED_TEST(ReportOver, StatusOfABenchmarkDoesNotCount) {
  SearchStatus<TypeParam> status;
  status.benchmark = true;
  status.solutionTimes.resize(1, false);
  status.solutionTimes[1] = 7;
  EXPECT_EQ(statusText(status), "\n{ The first solution/s was/were found after: 7 sec(s) }\n");
}

}  // namespace
}  // namespace starsift

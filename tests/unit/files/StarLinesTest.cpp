#include "files/StarLines.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "stars/LineOrder.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {
namespace {

InputText inputText(const std::string& text) {
  auto bytes = std::make_unique_for_overwrite<char[]>(text.size() + 1);
  std::memcpy(bytes.get(), text.c_str(), text.size() + 1);
  return {std::move(bytes), text.size()};
}

std::string wholeOf(const StarLine& line) {
  return std::string(line.x()).append(line.rest());
}

/// x1 + x2 <= 9, 0 <= x <= 9, minimise x1 - x2.
Vanu<QQ> smallProblem() {
  Vanu<QQ> problem;
  problem.At = {{QQ(1), QQ(-1)}};
  problem.dt = {-QQ::infinity()};
  problem.Au = {{QQ(1), QQ(1)}};
  problem.lu = {-QQ::infinity()};
  problem.ru = {QQ(9)};
  problem.lx = {QQ(0), QQ(0)};
  problem.rx = {QQ(9), QQ(9)};
  return problem;
}

void ignore(const ReadProgress& /*progress*/) {}

/// The lines of right stars, one after the other; "none" if they need a reader of stars.
template <class T>
std::string rightLines(const std::string& text, unsigned threads = 1) {
  const Vanu<QQ> problem = smallProblem();
  const InputText input = inputText(text);
  const std::optional<StarLines> stars =
      readRightStars<T>(input, *lineChecker(problem), threads, ignore);
  if (!stars) return "none";
  std::string result;
  for (const StarLine& line : stars->lines) result += wholeOf(line) + "\n";
  return result;
}

template <class T>
class StarLinesOf : public testing::Test {};

using Numbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(StarLinesOf, Numbers);

TYPED_TEST(StarLinesOf, RightStarsStayAsTheyAre) {
  const std::string text =
      "[ 1 2 ] | -1 | [ -1 ] | 0 | 5 | p | 2.4\n[ 9 0 ] | 9 | [ 9 ] | 0 | -1 | \n";
  EXPECT_EQ(rightLines<TypeParam>(text), text);
}

TYPED_TEST(StarLinesOf, WrongStarsGo) {
  EXPECT_EQ(rightLines<TypeParam>("[ 5 5 ] | 0 | [ 0 ] | 0 | 5 | p\n"
                                  "[ -1 0 ] | -1 | [ -1 ] | 0 | 5 | p\n[ 5 6 ]\n"),
            "");
}

TYPED_TEST(StarLinesOf, ResultsAreThoseOfTheCheck) {
  EXPECT_EQ(rightLines<TypeParam>("[ 1 2 ] | 7 | [ 1 2 3 ] | 4 | 5 | p | 2.4\n"),
            "[ 1 2 ] | -1 | [ -1 ] | 0 | 5 | p | 2.4\n");
}

TYPED_TEST(StarLinesOf, OtherFormsBecomeCanonical) {
  EXPECT_EQ(rightLines<TypeParam>("// c\n [1 +2]\n[ 1\n2 ]|1|[]|2|3|p|v |\n[ 4/2 2 ]"),
            "[ 1 2 ] | -1 | [ -1 ] | 0 | -1 | \n"
            "[ 1 2 ] | -1 | [ -1 ] | 0 | 3 | p | v\n"
            "[ 2 2 ] | 0 | [ 0 ] | 0 | -1 | \n");
}

TYPED_TEST(StarLinesOf, MalformedRecordsAreNoStars) {
  EXPECT_EQ(rightLines<TypeParam>("[ 1 2 ] | -1 | [ -1 ] | 0 | x | p\n[ 1 2 ]\n"),
            "[ 1 2 ] | -1 | [ -1 ] | 0 | -1 | \n");
}

TYPED_TEST(StarLinesOf, FailuresAreLeftToTheReaderOfStars) {
  for (const char* text : {"[ 1 ]\n", "[ 1 2 3 ]\n", "[ 1 2", "/* c", "[ inf 2 ]", "x\n",
                           "[ 1 2 ] | x | [ ] | 0 | 1 | p\n[ 1 y ]\n"})
    EXPECT_EQ(rightLines<TypeParam>(text), "none") << text;
}

TYPED_TEST(StarLinesOf, HandlerOfTheHostComesBack) {
  struct Handled {};
  setFailureHandler([](std::string_view) { throw Handled(); });
  EXPECT_EQ(rightLines<TypeParam>("[ 1 2"), "none");
  EXPECT_THROW(fail("x"), Handled);
  setFailureHandler(nullptr);
}

TYPED_TEST(StarLinesOf, ThreadsReadTheSameLines) {
  std::string text = "// stars\n";
  for (int i = 0; i < 100'000; ++i)
    text += "[ " + std::to_string(i % 11) + " " + std::to_string(i % 7) + " ] | " +
            std::to_string(i % 11 - i % 7) + " | [ 0 ] | 0 | " + std::to_string(i) + " | p" +
            (i % 5 == 0 ? " \n" : "\n");
  const std::string lines = rightLines<TypeParam>(text);
  EXPECT_GT(lines.size(), std::size_t{1} << 21U);
  EXPECT_EQ(rightLines<TypeParam>(text, 2), lines);
  EXPECT_EQ(rightLines<TypeParam>(text, 7), lines);
}

TYPED_TEST(StarLinesOf, CommentAcrossPartsIsLeftToTheReaderOfStars) {
  std::string comment = "/*";
  for (int i = 0; i < 400'000; ++i) comment += "\n[ 1 2 ]";
  const std::string text = comment + "*/\n[ 1 2 ]\n";
  EXPECT_EQ(rightLines<TypeParam>(text), "none");
}

TEST(StarLines, LongDoubleLeavesWhatItCantHold) {
  EXPECT_THROW(rightLines<long double>("[ 1/3 2 ]\n"), PrecisionException);
  EXPECT_EQ(rightLines<long double>("[ 1/3 99 ]\n"), "");
  EXPECT_EQ(rightLines<long double>("[ 0.123456789012345678 0 ]\n"), "none");
  EXPECT_EQ(rightLines<QQ>("[ 1/3 2 ]\n"), "[ 1/3 2 ] | -1:2/3 | [ -1:2/3 ] | 0 | -1 | \n");
  EXPECT_EQ(rightLines<long double>("[ 1.5 2 ]\n"), "[ 1.5 2 ] | -0.5 | [ -0.5 ] | 0 | -1 | \n");
}

TEST(StarLines, ProgressGrowsToTheWholeText) {
  std::string text;
  while (text.size() < std::size_t{5} << 20U)
    text += "[ 1 2 ] | -1 | [ -1 ] | 0 | 5 | p\n[ 9 9 ]\n[ 1 2 ] | 0 | [ ] | 0 | x | p\n";
  std::vector<ReadProgress> seen;
  const InputText input = inputText(text);
  const Vanu<QQ> problem = smallProblem();
  const auto stars =
      readRightStars<QQ>(input, *lineChecker(problem), 1,
                         [&](const ReadProgress& progress) { seen.push_back(progress); });
  ASSERT_TRUE(stars.has_value());
  ASSERT_EQ(seen.size(), 5U);
  for (std::size_t i = 1; i < seen.size(); ++i) EXPECT_GT(seen[i].done, seen[i - 1].done);
  EXPECT_EQ(seen.back().done, text.size());
  EXPECT_EQ(seen.back().all, text.size());
  EXPECT_EQ(seen.back().kept, stars->lines.size());
  EXPECT_EQ(seen.back().dropped, 2 * stars->lines.size());
}

TEST(StarLines, RowsOfAnotherLengthAreLeftToTheReaderOfStars) {
  Vanu<QQ> problem = smallProblem();
  problem.Au = {{QQ(1), QQ(1), QQ(1)}};
  EXPECT_FALSE(lineChecker(problem).has_value());
}

}  // namespace
}  // namespace starsift

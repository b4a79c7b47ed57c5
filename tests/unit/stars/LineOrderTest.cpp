#include "stars/LineOrder.h"

#include <gtest/gtest.h>

#include <string>

namespace starsift {
namespace {

/// A line with the time 5 and the norms 0 unless they are set.
StarLine line(std::string_view x, std::string_view params = "p", std::string_view version = "") {
  // The texts are literals: they stay.
  StarLine result;
  result.xText = x.data();
  result.xSize = static_cast<std::uint32_t>(x.size());
  result.restText = params.data();
  result.restSize = static_cast<std::uint32_t>(params.size());
  result.paramsSize = static_cast<std::uint32_t>(params.size() - version.size());
  result.versionSize = static_cast<std::uint32_t>(version.size());
  result.time = 5;
  result.hash = hashOfText(x);
  return result;
}

std::string order(const std::vector<StarLine>& lines) {
  std::string text;
  for (const StarLine& line : lines) text += line.x();
  return text;
}

TEST(LineOrder, SmallerTargetNormComesFirst) {
  std::vector<StarLine> lines{line("a"), line("b"), line("c")};
  lines[0].targetNorm = QQ(2);
  lines[1].targetNorm = QQ(-1);
  lines[2].targetNorm = QQ(1, 3);
  EXPECT_TRUE(sortLines(lines));
  EXPECT_EQ(order(lines), "bca");
}

TEST(LineOrder, SlackNormTimeVersionTextAndParametersDecideInThisOrder) {
  std::vector<StarLine> lines{
      line("f"), line("e", "q"), line("e", "p"), line("d", "p2.3", "2.3"), line("c", "p2.4", "2.4"),
      line("b"), line("a")};
  lines[5].time = 4;
  lines[6].slackNorm = QQ(-1);
  for (std::size_t i : {0U, 1U, 2U}) lines[i].time = 6;
  EXPECT_TRUE(sortLines(lines));
  EXPECT_EQ(order(lines), "abcdeef");
  EXPECT_EQ(lines[4].params(), "p");
}

TEST(LineOrder, UnknownTimeComesLast) {
  std::vector<StarLine> lines{line("a"), line("b")};
  lines[0].time = static_cast<std::uint64_t>(-1);
  EXPECT_TRUE(sortLines(lines));
  EXPECT_EQ(order(lines), "ba");
}

TEST(LineOrder, EqualVersionsWithDifferentTextsLeaveTheOrderOpen) {
  std::vector<StarLine> lines{line("a", "p2.4", "2.4"), line("a", "p2.4.0", "2.4.0")};
  EXPECT_FALSE(sortLines(lines));
}

TEST(LineOrder, EqualLinesLeaveNothingOpen) {
  std::vector<StarLine> lines{line("a"), line("a")};
  EXPECT_TRUE(sortLines(lines));
}

TEST(LineOrder, FirstOfEqualLinesStays) {
  std::vector<StarLine> lines{line("a", "p"), line("b", "p"), line("a", "q"), line("a", "p")};
  lines[3].time = 9;
  removeDuplicates(lines);
  EXPECT_EQ(order(lines), "aba");
  EXPECT_EQ(lines[0].time, 5U);
  EXPECT_EQ(lines[0].params(), "p");
}

TEST(LineOrder, FirstLineOfAPointIsMarked) {
  std::vector<StarLine> lines{line("a", "p"), line("b", "p"), line("a", "q"), line("a", "p"),
                              line("a", "r"), line("a", "q"), line("b", "q")};
  removeDuplicates(lines);
  std::string marked;
  for (const StarLine& line : lines) {
    marked += line.x();
    marked += line.params();
    marked += line.isFirstOfPoint ? "! " : " ";
  }
  EXPECT_EQ(marked, "ap! bp! aq ar bq ");
}

TEST(LineOrder, TextsThatDifferInTheirLastByteAreDifferent) {
  const std::string base(70, '1');
  for (std::size_t size = 0; size < base.size(); ++size)
    EXPECT_NE(hashOfText(base.substr(0, size)), hashOfText(base.substr(0, size + 1)));
}

}  // namespace
}  // namespace starsift

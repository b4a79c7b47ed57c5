// Problems as texts of their own.
#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <string>
#include <vector>

#include "LibraryErrors.h"

namespace starsift {
namespace {

Problem menu() {
  Problem problem;
  problem.addVariable(0, "inf", "tea 2:x\n");
  problem.addVariable("-1/3", "9.5", {}, 2);
  problem.addVariable("-inf", "123456789012345678901234567890");
  problem.addRange({0, "1/7", 1}, "-inf", 4, "first");
  problem.addEquation({1, 1, 1}, "2.5");
  problem.addRange(Row::sparse({}), -1, 1);
  problem.addCongruence({0, 0, "1e20"}, 1, 3, "last");
  problem.maximise({1, 0, 0});
  problem.approach({0, 1, 1}, "1/2");
  return problem;
}

TEST(LibraryProblemText, KeepsNamesAndTheOrderOfRows) {
  const Problem problem = menu();
  const Problem copy = Problem::fromText(problem.toText());
  EXPECT_EQ(copy.toOpt(), problem.toOpt());
  EXPECT_EQ(copy.toText(), problem.toText());
  for (std::size_t j = 0; j < problem.variableCount(); ++j)
    EXPECT_EQ(copy.variableName(j), problem.variableName(j));
  const std::vector<std::string> names{"first", "g1", "u2", "last"};
  for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(copy.rowName(i), names[i]);
}

TEST(LibraryProblemText, HasALineForEachVariableRowAndTarget) {
  Problem problem;
  problem.addVariable(0, 9, "tea");
  problem.addVariable(0, "inf");
  problem.addEquation({2, "1/2"}, 5, "weight");
  problem.maximise({3, 0});
  EXPECT_EQ(problem.toText(),
            "starsift problem 1 2 1 1\n"
            "0 9 0 3:tea\n"
            "0 inf 0 0:\n"
            "= 5 0 6:weight 2 0 2 1 0.5\n"
            "inf inf 1 0 3\n");
}

TEST(LibraryProblemText, KeepsWhatOnlyAFileCanSay) {
  const Problem problem = Problem::fromOpt(
      "[ 5 ] = [ 7 ] [ [ 1 ] ] [ [ 2 ] ] [ 3 ] [ 4 ] [ ] [ ] [ ] [ 1/2 ] [ 0 ] [ 9 ]");
  EXPECT_EQ(Problem::fromText(problem.toText()).toOpt(), problem.toOpt());
}

TEST(LibraryProblemText, IsOfUnfinishedProblemsToo) {
  Problem problem;
  EXPECT_EQ(Problem::fromText(problem.toText()).variableCount(), 0U);
  problem.addVariable(-1, 5, "tea");
  Problem copy = Problem::fromText(problem.toText());
  EXPECT_EQ(copy.variableName(0), "tea");
  copy.addEquation({3}, 6);
  EXPECT_TRUE(check(copy, std::vector<Number>{2}).isRight());
}

TEST(LibraryProblemText, OfAnythingElseIsRefused) {
  const std::string text = menu().toText();
  const std::string message = "not the text of a problem";
  for (std::size_t length = 0; length < text.size(); ++length)
    EXPECT_THROW(Problem::fromText(text.substr(0, length)), Error) << length;
  EXPECT_ERROR(Problem::fromText(text + ' '), message);
  EXPECT_ERROR(Problem::fromText("starsift problem 2 0 0 0\n"), message);
  EXPECT_ERROR(Problem::fromText("starsift problem 1 0 1 0\n> 0 0 0:\n"), message);
  EXPECT_ERROR(Problem::fromText("starsift problem 1 1 1 0\n0 1 0 0:\n= 0 0 0: 1 1 5\n"), message);
  EXPECT_ERROR(Problem::fromText("starsift problem 1 1 1 0\n0 1 0 0:\n= 0 0 0: 2 0 5 0 5\n"),
               message);
  EXPECT_ERROR(Problem::fromText("starsift problem 1 9999999999999 0 0\n"), message);
  EXPECT_ERROR(Problem::fromText("starsift problem 1 1 0 0\n0 1 0 99:tea\n"), message);
}

}  // namespace
}  // namespace starsift

// Solvers run on models that ship or were written here, and what they find is brought in.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "models/jobs/Explain.h"
#include "models/jobs/Export.h"
#include "models/jobs/Import.h"
#include "models/jobs/SolutionText.h"
#include "models/solutions/SolverFile.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using Path = std::filesystem::path;

constexpr const char* guideFolder = STARSIFT_SOURCE_FOLDER "/docs/walk-through";

/// The names and numbers of the point in a solution file.
std::vector<std::string> pointOf(const Path& path) {
  const SolverFile file = readSolverFile(readModelText(path).view());
  std::vector<std::string> lines;
  for (const WrittenPoint& point : file.points)
    for (const WrittenValue& value : point.values)
      lines.push_back(value.column + ' ' + value.number);
  return lines;
}

TEST(WalkThrough, GlpkSaysWhatTheGuideShows) {
  const test::ScratchDir folder;
  const std::string command = "glpsol --lp " + std::string(guideFolder) + "/wide.lp -o " +
                              folder.file("found") + " >/dev/null 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(pointOf(folder.file("found")), pointOf(Path(guideFolder) / "glpsol.txt"));
}

TEST(WalkThrough, CbcSaysWhatTheGuideShows) {
  const test::ScratchDir folder;
  const std::string command = "cbc " + std::string(guideFolder) + "/wide.lp solve solution " +
                              folder.file("found") + " >/dev/null 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(pointOf(folder.file("found")), pointOf(Path(guideFolder) / "cbc.txt"));
}

/// Moduli, goals, a threshold and decimal places; see docs/file-formats.md.
constexpr const char* everything = R"([ inf 3 ] = [ 4 3 ]
[ [ 1 2 ] [ 1 0 ] ]
[ [ 1 10 ] ] [ 2 ] [ 7 ]
[ [ 0 3 ] ] [ 1 ] [ 14 ]
[ 0 1 ] [ 0 0 ] [ 9 9 ]
)";

/// The least norm of the points of `everything`, found by looking at all of them.
QQ leastNorm(const Problem& problem) {
  const PointCheck check(problem);
  QQ least = QQ::infinity();
  for (long i = 0; i <= 9; ++i) {
    for (long tenths = 0; tenths <= 90; ++tenths) {
      const PointReport report = check.check({QQ(i), QQ(tenths, 10)});
      if (report.isRight() && report.targetValues[0] >= QQ(4))
        least = std::min(least, abs(report.targetValues[1] - QQ(3)) - report.targetValues[0]);
    }
  }
  return least;
}

TEST(WayBack, WhatSolversFindOfATransformedProblemIsItsOptimum) {
  const test::ScratchDir folder;
  const std::string problem = folder.write("p.opt", everything);
  const std::string model = folder.file("p.mps");
  exportModel(problem, model, {});
  const std::vector<std::string> solutions{folder.file("table"), folder.file("raw"),
                                           folder.file("cbc")};
  const std::string command = "glpsol --freemps " + model + " -o " + solutions[0] + " -w " +
                              solutions[1] + " >/dev/null 2>&1 && cbc " + model +
                              " solve solution " + solutions[2] + " >/dev/null 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const JobReport report = importSolutions(problem, solutions, {});
  ASSERT_EQ(report.solutions.size(), solutions.size());
  for (const SolutionReport& solution : report.solutions) {
    ASSERT_EQ(solution.records.size(), 1U) << solution.solver;
    const PointReport& check = solution.records.front().check;
    EXPECT_TRUE(check.isRight()) << solution.solver;
    EXPECT_EQ(abs(check.targetValues[1] - QQ(3)) - check.targetValues[0],
              leastNorm(report.problem));
  }
  std::size_t malformed = 0;
  const auto records = readRecords(readModelText(folder.file("p.sol")), 2, false, malformed);
  ASSERT_EQ(records.size(), solutions.size());
  EXPECT_EQ(records[0].x, report.solutions[0].records[0].point.x);
}

/// The optimum, 9 at (3, 1), lies on the lower bound of the first row and the upper one of the
/// second.
constexpr const char* twoRanges = R"([ inf ]
[ [ 4 -3 ] ]
[ ] [ ] [ ]
[ [ 1 2 ] [ 1 1 ] ] [ 5 1 ] [ 9 4 ]
[ 0 0 ] [ 0 0 ] [ 4 4 ]
)";

TEST(WayBack, SolversReadMaximisedProblemsWithRangesAsLp) {
  const test::ScratchDir folder;
  const std::string problem = folder.write("p.opt", twoRanges);
  const std::string model = folder.file("p.lp");
  exportModel(problem, model, {});
  const std::vector<std::string> solutions{folder.file("glpk"), folder.file("raw"),
                                           folder.file("cbc")};
  const std::string command = "glpsol --lp " + model + " -o " + solutions[0] + " -w " +
                              solutions[1] + " >/dev/null 2>&1 && cbc " + model +
                              " solve solution " + solutions[2] + " >/dev/null 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const JobReport report = importSolutions(problem, solutions, {});
  for (const SolutionReport& solution : report.solutions) {
    ASSERT_EQ(solution.records.size(), 1U) << solution.path;
    EXPECT_EQ(solution.records[0].point.x, (std::vector<QQ>{QQ(3), QQ(1)})) << solution.path;
  }
}

TEST(WayBack, CbcReadsMaximisedProblemsAsMpsIfItIsToldSo) {
  const test::ScratchDir folder;
  const std::string problem = folder.write("p.opt", twoRanges);
  const std::string model = folder.file("p.mps");
  const std::string found = folder.file("found");
  exportModel(problem, model, {});
  const std::string command = "cbc " + model + " max solve solution " + found + " >/dev/null 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const JobReport report = importSolutions(problem, {found}, {});
  ASSERT_EQ(report.solutions.size(), 1U);
  ASSERT_EQ(report.solutions[0].records.size(), 1U);
  EXPECT_EQ(report.solutions[0].records[0].point.x, (std::vector<QQ>{QQ(3), QQ(1)}));
}

/// CBC dislikes y[1], and each column has one value. Some are first seen in a term of 0.
constexpr const char* badName = R"(Maximize
 value: 0 x4 + 2 x1 + 5
Subject To
 first: 0 x0 + x1 = 7
 second: x4 + x0 - x1 = 2
 third: y[1] - x2 = 3
 fourth: x2 - x0 = 0
 fifth: x4 - 2 x0 = 0
End
)";

TEST(WayBack, CbcNumbersTheColumnsOfAnLpFileInTheOrderOfTheModel) {
  const test::ScratchDir folder;
  const std::string model = folder.write("m.lp", badName);
  const std::string found = folder.file("found");
  const std::string command = "cbc " + model + " solve solution " + found + " >/dev/null 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const JobReport report = explain({model, found}, {});
  ASSERT_EQ(report.solutions.size(), 1U);
  ASSERT_EQ(report.solutions[0].records.size(), 1U);
  EXPECT_TRUE(report.solutions[0].records[0].point.isByIndex);
  EXPECT_TRUE(report.solutions[0].records[0].check.isRight());
}

constexpr const char* packing = R"(Maximize
 value: 4 a + 5 b + 6 c + 3 d
Subject To
 weight: 5 a + 7 b + 8 c + 4 d <= 23
 pairs: a + b <= 3
Bounds
 a <= 4
 b <= 4
 c <= 4
 d <= 4
General
 a b c d
End
)";

TEST(Cbc, StartsFromARecordThatIsHandedToIt) {
  const test::ScratchDir folder;
  const std::string model = folder.write("packing.lp", packing);
  const std::string found = folder.write("found", "=obj= 15\na 3\nc 1\n");
  importModel(model, {found}, folder.file("packing"), {});
  const std::string start = folder.write(
      "start",
      solutionText(recordsOf(model, folder.file("packing.sol"), 1, {}), SolutionForm::cbc));
  const std::string log = folder.file("log");
  const std::string command = "cbc " + model + " -mipstart " + start + " -solve >" + log + " 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const ModelText said = readModelText(log);
  EXPECT_NE(said.view().find("MIPStart values read for 4 variables."), std::string_view::npos)
      << said.view();
  EXPECT_NE(said.view().find("MIPStart provided solution with cost 18"), std::string_view::npos)
      << said.view();
}

}  // namespace
}  // namespace starsift

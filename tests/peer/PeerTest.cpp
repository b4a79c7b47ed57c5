// Models that other programs ship or write, read by us and by them: QSopt_ex for MPS, GLPK for LP.
//
// The files are the examples of GLPK, and what glpsol writes of its examples in the MathProg
// language. The peers differ in what docs/models.md says; none of these files touches that, but
// that QSopt_ex has no constant in the objective.
#include <gmp.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// Some of its headers forget that C++ may include them.
extern "C" {
#include <QSopt_ex.h>
}

#include "models/jobs/Explain.h"
#include "models/jobs/Export.h"
#include "models/jobs/Import.h"
#include "models/jobs/SolutionText.h"
#include "models/read/ModelReader.h"
#include "models/record/Model.h"
#include "models/solutions/SolverFile.h"
#include "models/text/NumberText.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using Path = std::filesystem::path;
constexpr const char* exampleFolder = "/usr/share/doc/glpk-utils/examples";

/// A model as sorted lines of names and numbers: one per row, column and objective coefficient.
using Lines = std::vector<std::string>;

std::string rowLine(std::string_view name, const QQ& lower, const QQ& upper, Lines terms) {
  std::sort(terms.begin(), terms.end());
  std::string line =
      "row " + std::string(name) + ' ' + numberText(lower) + ".." + numberText(upper);
  for (const std::string& term : terms) line += ' ' + term;
  return line;
}

std::string termText(std::string_view column, const QQ& value) {
  return numberText(value) + '*' + std::string(column);
}

std::string columnLine(std::string_view name, bool isInteger, const QQ& lower, const QQ& upper) {
  return "column " + std::string(name) + (isInteger ? " integer " : " ") + numberText(lower) +
         ".." + numberText(upper);
}

Lines linesOf(const Model& model) {
  Lines lines;
  const RowView view(model);
  for (std::size_t i = 0; i < model.rowCount(); ++i) {
    Lines terms;
    for (std::size_t k = view.start[i]; k < view.start[i + 1]; ++k)
      terms.push_back(
          termText(model.columnNames[view.columns[k]], model.entryValues[view.entries[k]]));
    lines.push_back(rowLine(model.rowNames[i], model.rowLower[i], model.rowUpper[i], terms));
  }
  for (std::size_t j = 0; j < model.columnCount(); ++j)
    lines.push_back(columnLine(model.columnNames[j], model.kinds[j] != ColumnKind::continuous,
                               model.lower[j], model.upper[j]));
  const Objective& objective = model.objective;
  for (std::size_t k = 0; k < objective.columns.size(); ++k)
    lines.push_back("cost " +
                    termText(model.columnNames[objective.columns[k]], objective.coefficients[k]));
  std::sort(lines.begin(), lines.end());
  return lines;
}

Model readOurs(const Path& path) {
  return readModel(readModelText(path), formatOfPath(path.string()).value(), {});
}

/// The value of a GMP rational, infinite where QSopt_ex means that.
QQ valueOf(const mpq_t value) {
  if (mpq_equal(value, mpq_ILL_MAXDOUBLE) != 0) return QQ::infinity();
  if (mpq_equal(value, mpq_ILL_MINDOUBLE) != 0) return -QQ::infinity();
  ZZ numerator;
  ZZ denominator;
  mpz_set(numerator.get(), mpq_numref(value));
  mpz_set(denominator.get(), mpq_denref(value));
  return QQ(numerator, denominator);
}

/// A problem of QSopt_ex.
class Peer {
 public:
  explicit Peer(const Path& path) : problem_(mpq_QSread_prob(path.c_str(), "MPS")) {}
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer() {
    if (problem_ != nullptr) mpq_QSfree_prob(problem_);
  }

  bool isRead() const { return problem_ != nullptr; }
  Lines lines() const;

 private:
  mpq_QSprob problem_;
};

QQ lowerOf(char sense, const QQ& side) {
  return sense == 'L' ? -QQ::infinity() : side;
}

QQ upperOf(char sense, const QQ& side, const QQ& range) {
  if (sense == 'G') return QQ::infinity();
  return sense == 'R' ? side + range : side;
}

// What the library hands out is its own format, and lives as long as the process.
Lines Peer::lines() const {
  Lines lines;
  const int columns = mpq_QSget_colcount(problem_);
  const int rows = mpq_QSget_rowcount(problem_);
  int* counts = nullptr;
  int* begins = nullptr;
  int* indices = nullptr;
  mpq_t* values = nullptr;
  mpq_t* costs = nullptr;
  mpq_t* lower = nullptr;
  mpq_t* upper = nullptr;
  char** columnNames = nullptr;
  mpq_QSget_columns(problem_, &counts, &begins, &indices, &values, &costs, &lower, &upper,
                    &columnNames);
  std::vector<int> integers(static_cast<std::size_t>(columns) + 1);
  mpq_QSget_intflags(problem_, integers.data());
  for (int j = 0; j < columns; ++j) {
    lines.push_back(columnLine(columnNames[j], integers[static_cast<std::size_t>(j)] != 0,
                               valueOf(lower[j]), valueOf(upper[j])));
    const QQ cost = valueOf(costs[j]);
    if (!cost.isZero()) lines.push_back("cost " + termText(columnNames[j], cost));
  }
  mpq_t* sides = nullptr;
  mpq_t* ranges = nullptr;
  char* senses = nullptr;
  char** rowNames = nullptr;
  mpq_QSget_ranged_rows(problem_, &counts, &begins, &indices, &values, &sides, &senses, &ranges,
                        &rowNames);
  for (int i = 0; i < rows; ++i) {
    Lines terms;
    for (int k = begins[i]; k < begins[i] + counts[i]; ++k)
      if (const QQ value = valueOf(values[k]); !value.isZero())
        terms.push_back(termText(columnNames[indices[k]], value));
    const QQ side = valueOf(sides[i]);
    lines.push_back(rowLine(rowNames[i], lowerOf(senses[i], side),
                            upperOf(senses[i], side, valueOf(ranges[i])), terms));
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

/// The library has global state: from its start on GMP's numbers lie in memory of its own, so it is
/// never ended.
class WithQsopt : public testing::Test {
 protected:
  static void SetUpTestSuite() { QSexactStart(); }
};

std::vector<Path> examplesWith(const std::string& ending) {
  std::vector<Path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(exampleFolder))
    if (entry.path().extension() == ending) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

TEST_F(WithQsopt, ReadsTheExamplesOfGlpkAsWeDo) {
  const std::vector<Path> paths = examplesWith(".mps");
  ASSERT_GE(paths.size(), 7U) << "the examples of glpk-utils are missing";
  std::vector<std::string> refused;
  for (const Path& path : paths) {
    const Peer peer(path);
    if (peer.isRead())
      EXPECT_EQ(linesOf(readOurs(path)), peer.lines()) << path;
    else
      refused.push_back(path.stem());
  }
  // In fixed columns these have names with blanks, or leave names out.
  EXPECT_EQ(refused, (std::vector<std::string>{"alloy", "furnace", "icecream", "plan"}));
}

/// Examples that glpsol makes models of in short time, without data of their own.
constexpr std::array<const char*, 30> mathProgExamples{
    "assign",  "bpp",     "color", "cpp",       "diet",   "dist",  "egypt",    "fctp",
    "food",    "food2",   "gap",   "magic",     "maxcut", "mfasp", "min01ks",  "misp",
    "money",   "numbrix", "plan",  "planarity", "prod",   "qfit",  "shiftcov", "spp",
    "stigler", "tas",     "todd",  "transp",    "trick",  "tsp"};

/// What glpsol writes of an example, in three forms.
struct WrittenExample {
  std::string name;
  Path free;
  Path fixed;
  Path lp;
};

/// Empty if glpsol fails at one of them.
std::vector<WrittenExample> writeExamples() {
  static const test::ScratchDir folder;
  std::vector<WrittenExample> written;
  for (const std::string name : mathProgExamples) {
    const std::string stem = folder.file(name);
    const WrittenExample example{name, stem + "-free.mps", stem + "-fixed.mps", stem + ".lp"};
    const std::string command = "timeout 60 glpsol --check -m " + std::string(exampleFolder) + '/' +
                                name + ".mod --wfreemps " + example.free.string() + " --wmps " +
                                example.fixed.string() + " --wlp " + example.lp.string() +
                                " >/dev/null 2>&1";
    if (std::system(command.c_str()) != 0) return {};
    written.push_back(example);
  }
  return written;
}

const std::vector<WrittenExample>& writtenExamples() {
  static const std::vector<WrittenExample> examples = writeExamples();
  return examples;
}

TEST_F(WithQsopt, ReadsWhatGlpkWritesAsWeDo) {
  ASSERT_FALSE(writtenExamples().empty());
  for (const WrittenExample& example : writtenExamples()) {
    const Peer peer(example.free);
    ASSERT_TRUE(peer.isRead()) << example.name;
    EXPECT_EQ(linesOf(readOurs(example.free)), peer.lines()) << example.name;
  }
}

TEST(Glpk, ReadsColumnsWhoseNamesStandOnTheirFirstLinesAsWeDo) {
  const Model model = readOurs(Path(exampleFolder) / "alloy.mps");
  // "22 rows, 20 columns, 203 non-zeros" by glpsol, the objective among them.
  EXPECT_EQ(model.rowCount() + 1, 22U);
  EXPECT_EQ(model.columnCount(), 20U);
  EXPECT_EQ(model.entryCount() + model.objective.columns.size(), 203U);
}

/// All numbers of a model but its names, which glpsol changes for LP files.
std::vector<QQ> numbersOf(const Model& model) {
  std::vector<QQ> numbers;
  for (const auto* values : {&model.objective.coefficients, &model.lower, &model.upper,
                             &model.rowLower, &model.rowUpper})
    numbers.insert(numbers.end(), values->begin(), values->end());
  for (std::size_t k = 0; k < model.entryCount(); ++k) numbers.push_back(model.entryValues[k]);
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

TEST(Glpk, WritesTheSameModelAsLpAndInBothFormsOfMps) {
  int compared = 0;
  for (const WrittenExample& example : writtenExamples()) {
    const Model model = readOurs(example.free);
    EXPECT_EQ(numbersOf(readOurs(example.fixed)), numbersOf(model)) << example.name;
    // In LP files glpsol makes a column of each range.
    if (std::count(model.senses.begin(), model.senses.end(), RowSense::ranged) > 0) continue;
    ++compared;
    EXPECT_EQ(numbersOf(readOurs(example.lp)), numbersOf(model)) << example.name;
  }
  EXPECT_GE(compared, 20);
}

constexpr const char* guideFolder = STARSIFT_SOURCE_FOLDER "/docs/walk-through";

/// The names and numbers of the point in a solution file.
Lines pointOf(const Path& path) {
  const SolverFile file = readSolverFile(readModelText(path).view());
  Lines lines;
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

TEST(WalkThrough, CbcSaysWhatTheGuideShowsWithOneMoreRow) {
  const test::ScratchDir folder;
  const ModelText model = readModelText(Path(guideFolder) / "wide.lp");
  std::string text(model.view());
  text.insert(text.find(" hooks:"), " fewer: x - y <= -1\n");
  const std::string command = "cbc " + folder.write("tight.lp", text) + " solve solution " +
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
  const auto records = readRecords(folder.file("p.sol"), 2, false, malformed);
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
  const std::vector<std::string> solutions{folder.file("glpk"), folder.file("cbc")};
  const std::string command = "glpsol --lp " + model + " -o " + solutions[0] +
                              " >/dev/null 2>&1 && cbc " + model + " solve solution " +
                              solutions[1] + " >/dev/null 2>&1";
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

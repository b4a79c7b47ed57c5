// MPS files that other programs ship or write, read by us and by QSopt_ex.
//
// The files are the examples of GLPK, and what glpsol writes of its examples in the MathProg
// language. The peers differ in what docs/models.md says; none of these files touches that, but
// that QSopt_ex has no constant in the objective.
#include <gmp.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// Some of its headers forget that C++ may include them.
extern "C" {
#include <QSopt_ex.h>
}

#include "models/text/NumberText.h"
#include "support/fixtures/GlpkExamples.h"

namespace starsift {
namespace {

using test::examplesWith;
using test::Path;
using test::readOurs;
using test::WrittenExample;
using test::writtenExamples;

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

/// The library has global state: from its start on GMP's numbers lie in memory of its own. So it
/// starts before all tests and is never ended.
class QsoptLibrary : public testing::Environment {
 public:
  void SetUp() override { QSexactStart(); }
};

[[maybe_unused]] const testing::Environment* const library =
    testing::AddGlobalTestEnvironment(new QsoptLibrary);

TEST(Qsopt, ReadsTheExamplesOfGlpkAsWeDo) {
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

TEST(Qsopt, ReadsWhatGlpkWritesAsWeDo) {
  ASSERT_FALSE(writtenExamples().empty());
  for (const WrittenExample& example : writtenExamples()) {
    const Peer peer(example.free);
    ASSERT_TRUE(peer.isRead()) << example.name;
    EXPECT_EQ(linesOf(readOurs(example.free)), peer.lines()) << example.name;
  }
}

}  // namespace
}  // namespace starsift

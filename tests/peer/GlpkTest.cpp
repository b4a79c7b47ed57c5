// Models that GLPK ships or writes, in its count and in its three forms.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/fixtures/GlpkExamples.h"

namespace starsift {
namespace {

using test::exampleFolder;
using test::Path;
using test::readOurs;
using test::WrittenExample;
using test::writtenExamples;

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

}  // namespace
}  // namespace starsift

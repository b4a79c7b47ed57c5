// Every file below tests/solutions, each what a solver wrote, with what must be read from it.
//
// A folder has the file model.lp. Each other file there without the ending .expected is a solution
// file of that model, and the file with that ending beside it says what must be read: the lines of
// descriptionOf(), or one line "error 3: ..." with the line and the sentence of the refusal. A line
// "option keep-rounded" sets that option. Dropping both files in adds a test.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "models/read/ModelReader.h"
#include "models/solutions/PointReader.h"
#include "models/solutions/SolverFile.h"
#include "models/text/ModelError.h"
#include "models/text/ModelText.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {
namespace {

std::string changesText(const Model& model, std::string_view word, const ValueChanges& changes) {
  if (changes.count == 0) return "";
  return std::string(word) + ' ' + std::to_string(changes.count) + ", at most " +
         numberText(changes.largest) + " of " + std::string(model.columnNames[changes.column]) +
         "\n";
}

std::string pointText(const Model& model, const ReadPoint& point) {
  std::string text;
  for (std::size_t j = 0; j < model.columnCount(); ++j)
    text += std::string(model.columnNames[j]) + " = " + numberText(point.x[j]) + "\n";
  text += changesText(model, "rounded", point.rounded);
  text += changesText(model, "snapped", point.snapped);
  for (const std::uint32_t column : point.fractional)
    text += "fraction of " + std::string(model.columnNames[column]) + "\n";
  if (point.isByIndex) text += "taken by index\n";
  if (point.unused > 0) text += "unused " + std::to_string(point.unused) + "\n";
  return text;
}

std::string descriptionOf(const Model& model, const SolverFile& file,
                          const RoundingOptions& options) {
  std::string text = "format " + std::string(file.format.name) + "\n";
  for (const ModelRemark& remark : file.remarks)
    text += "told " + std::to_string(remark.line) + ": " + remark.text + "\n";
  if (!file.noSolution.empty()) text += "no solution: " + file.noSolution + "\n";
  for (const WrittenPoint& point : file.points) {
    text += "point " + point.status + "\n";
    text += pointText(model, readPoint(model, file.format, point, options));
  }
  return text;
}

std::vector<std::filesystem::path> solverFiles() {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(STARSIFT_SOLVER_FILES))
    if (entry.is_regular_file() && entry.path().filename() != "model.lp" &&
        entry.path().extension() != ".expected")
      paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string nameOf(const testing::TestParamInfo<std::filesystem::path>& info) {
  std::string name = std::filesystem::relative(info.param, STARSIFT_SOLVER_FILES).string();
  for (char& c : name)
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  return name;
}

class SolverFileOfDisk : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(SolverFileOfDisk, IsReadAsExpected) {
  constexpr std::string_view keep = "option keep-rounded\n";
  const std::filesystem::path path = GetParam();
  const ModelText expectedText = readModelText(path.string() + ".expected");
  std::string expected(expectedText.view());
  RoundingOptions options;
  if (expected.starts_with(keep)) {
    options.keepRounded = true;
    expected.erase(0, keep.size());
  }
  const Model model =
      readModel(readModelText(path.parent_path() / "model.lp"), ModelFormat::lp, {});
  std::string found;
  try {
    found = descriptionOf(model, readSolverFile(readModelText(path).view()), options);
  } catch (const ModelError& error) {
    found = "error " + std::to_string(error.line()) + ": " + error.sentence() + "\n";
  }
  EXPECT_EQ(found, expected);
}

INSTANTIATE_TEST_SUITE_P(Solutions, SolverFileOfDisk, testing::ValuesIn(solverFiles()), nameOf);

}  // namespace
}  // namespace starsift

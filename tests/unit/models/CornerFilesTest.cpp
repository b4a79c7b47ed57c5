// Every file below tests/models, each a corner of a format with what must be read from it.
//
// What is expected stands in the file itself, in comments that begin with "*=" (MPS, OPB) or "\="
// (LP), or in a file beside it with the ending .expected: the lines of modelText(), or one line
// "error 3: ..." with the line and the sentence of the refusal. A line "option NAME=VALUE" sets
// infinity or integer-upper. Dropping a file in adds a test.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "models/read/ModelReader.h"
#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/Words.h"
#include "support/fixtures/ModelDescription.h"

namespace starsift {
namespace {

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

struct Expectation {
  ReadOptions options;
  std::string lines;
};

QQ optionValue(std::string_view text) {
  bool isPositive = true;
  if (text == "none" || isInfinityWord(text, isPositive)) return QQ::infinity();
  return parseNumber(text).value();
}

void addLine(std::string_view line, Expectation& expectation) {
  line = trimmed(line);
  constexpr std::string_view infinity = "option infinity=";
  constexpr std::string_view integerUpper = "option integer-upper=";
  if (line.starts_with(infinity))
    expectation.options.infinity = optionValue(line.substr(infinity.size()));
  else if (line.starts_with(integerUpper))
    expectation.options.integerUpper = optionValue(line.substr(integerUpper.size()));
  else
    (expectation.lines += line) += '\n';
}

Expectation expectationOf(const std::filesystem::path& path) {
  Expectation expectation;
  const std::filesystem::path beside = path.string() + ".expected";
  const bool isBeside = std::filesystem::exists(beside);
  const std::string content = contentOf(isBeside ? beside : path);
  std::string_view rest = content;
  while (!rest.empty()) {
    std::string_view line = takeLine(rest);
    if (!isBeside && !line.starts_with("*=") && !line.starts_with("\\=")) continue;
    if (!isBeside) line.remove_prefix(2);
    addLine(line, expectation);
  }
  return expectation;
}

std::string outcomeOf(const std::filesystem::path& path, const ReadOptions& options) {
  try {
    const ModelFormat format = formatOfPath(path.string()).value();
    return test::modelText(readModel(readModelText(path), format, options));
  } catch (const ModelError& error) {
    return "error " + std::to_string(error.line()) + ": " + error.sentence() + "\n";
  }
}

std::vector<std::filesystem::path> cornerFiles() {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(STARSIFT_CORNER_FILES))
    if (entry.is_regular_file() && formatOfPath(entry.path().string()))
      paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string nameOf(const testing::TestParamInfo<std::filesystem::path>& info) {
  std::string name = std::filesystem::relative(info.param, STARSIFT_CORNER_FILES).string();
  for (char& c : name)
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  return name;
}

class CornerFile : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(CornerFile, IsReadAsExpected) {
  const Expectation expectation = expectationOf(GetParam());
  ASSERT_NE(expectation.lines, "") << GetParam() << " says nothing of what is expected";
  EXPECT_EQ(outcomeOf(GetParam(), expectation.options), expectation.lines);
}

INSTANTIATE_TEST_SUITE_P(Models, CornerFile, testing::ValuesIn(cornerFiles()), nameOf);

}  // namespace
}  // namespace starsift

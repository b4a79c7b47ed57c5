// Models in several dialects: the files of each folder below tests/dialects are one model, spelled
// by hand, by GLPK, by CBC or by starport. Dropping a file in adds it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "models/read/ModelReader.h"
#include "support/fixtures/ModelDescription.h"

namespace starsift {
namespace {

std::vector<std::filesystem::path> dialectsOf(const std::string& model) {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::filesystem::path(STARSIFT_DIALECTS) / model))
    paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string contentOfDialect(const std::filesystem::path& path) {
  const ModelFormat format = formatOfPath(path.string()).value();
  return test::contentText(readModel(readModelText(path.string()), format, {}));
}

void expectContent(const std::string& model, const std::string& content) {
  for (const std::filesystem::path& path : dialectsOf(model))
    EXPECT_EQ(contentOfDialect(path), content) << path;
}

TEST(Dialects, SidesAndBoundsReadTheSame) {
  EXPECT_GE(dialectsOf("stock").size(), 9U);
  expectContent("stock", R"(min : 3 a + 2.5 b - c + 0.125 d
demand: a + b - d >= 4
stock: 2 a + 3 b + c <= 20
pair: b - c = 1
lent: -0.5 a + d >= -3
a integer in [0, 10]
b integer in [0, 8]
c integer in [0, 1]
d in [-5, 5]
)");
}

TEST(Dialects, RangesAndConstantsReadTheSame) {
  EXPECT_GE(dialectsOf("ranges").size(), 8U);
  expectContent("ranges", R"(max : 3 a + 2.5 b - c + 7
few: 1 <= a + b <= 6
even: -2 <= a - b <= 1
most: b + c >= -4
a integer in [0, 10]
b integer in [0, 8]
c in [0, 2.5]
)");
}

}  // namespace
}  // namespace starsift

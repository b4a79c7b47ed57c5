// What GLPK and CBC write of a model today reads as the model; tests/dialects has what they wrote
// once.
#include <gtest/gtest.h>

#include <string>

#include "support/fixtures/GlpkExamples.h"
#include "support/fixtures/ModelDescription.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

constexpr const char* stockFolder = STARSIFT_SOURCE_FOLDER "/tests/dialects/stock";

void expectSameContent(const std::string& written, const std::string& model) {
  EXPECT_EQ(test::contentText(test::readOurs(written)), test::contentText(test::readOurs(model)))
      << written;
}

TEST(WrittenDialects, OfGlpkReadAsTheModel) {
  const test::ScratchDir folder;
  const std::string model = std::string(stockFolder) + "/cplex.lp";
  ASSERT_TRUE(test::succeeds("glpsol --check --lp " + model + " --wmps " +
                             folder.file("fixed.mps") + " --wfreemps " + folder.file("free.mps") +
                             " --wlp " + folder.file("again.lp")));
  for (const char* name : {"fixed.mps", "free.mps", "again.lp"})
    expectSameContent(folder.file(name), model);
}

TEST(WrittenDialects, OfCbcReadAsTheModel) {
  const test::ScratchDir folder;
  const std::string model = std::string(stockFolder) + "/glpk-free.mps";
  // It packs MPS files, and exports what its presolve leaves unless told otherwise.
  for (const char* name : {"again.mps", "again.lp"})
    ASSERT_TRUE(
        test::succeeds("cbc " + model + " -presolve off -export " + folder.file(name) + " -quit"));
  for (const char* name : {"again.mps.gz", "again.lp"}) expectSameContent(folder.file(name), model);
}

}  // namespace
}  // namespace starsift

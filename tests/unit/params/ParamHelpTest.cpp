#include "params/ParamHelp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "params/ParamTable.h"
#include "support/fixtures/FreshConsole.h"
#include "system/Console.h"

namespace starsift {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// What is reported about a set with the parameters of the text.
std::string reported(const std::string& text) {
  Params params;
  std::istringstream(text) >> params;
  testing::internal::CaptureStderr();
  reportWithoutEffect(params);
  return testing::internal::GetCapturedStderr();
}

class ParamWithoutEffect : public test::FreshConsole {};

std::string help() {
  std::ostringstream stream;
  writeParamHelp(stream);
  return stream.str();
}

TEST(ParamHelp, StartsWithTheFirstParameter) {
  EXPECT_THAT(help(), StartsWith("  --help=0   (bool)\n      Display this help information.\n"
                                 "  --verb=0   (long)\n"));
}

TEST(ParamHelp, HasAllParametersWithTheirDefaults) {
  for (const ParamRow& row : paramTable())
    EXPECT_THAT(help(), HasSubstr("  --" + std::string(row.name) + '=' +
                                  std::string(row.defaultText) + "   ("));
}

TEST(ParamHelp, BreaksLongTextsBetweenWords) {
  EXPECT_THAT(help(), HasSubstr("      By setting this switch the lattice transformations are "
                                "tracked and\n      consulted to detect computing / overflow "
                                "errors.\n"));
}

TEST(ParamHelp, HasNoLineOfMoreThanEightyCharacters) {
  std::istringstream lines(help());
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
}

TEST_F(ParamWithoutEffect, IsReportedAtItsPlaceInTheTable) {
  EXPECT_EQ(reported("--pair=0 --collectLimit=+030 --sol=5"),
            "*** Without effect so far: --collectLimit=+030 --pair=0\n");
  EXPECT_NE(lastOutputTime(), 0);
}

TEST_F(ParamWithoutEffect, IsNotReportedAtItsDefault) {
  EXPECT_EQ(reported("--collectLimit=+0100 --pair=1 --bench=2"), "");
  EXPECT_EQ(lastOutputTime(), 0);
}

TEST_F(ParamWithoutEffect, IsNotReportedIfTheSetIsEmpty) {
  EXPECT_EQ(reported("--collectLimit=30"), "*** Without effect so far: --collectLimit=30\n");
  EXPECT_EQ(reported(""), "");
}

}  // namespace
}  // namespace starsift

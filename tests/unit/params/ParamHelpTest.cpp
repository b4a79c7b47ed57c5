#include "params/ParamHelp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "params/ParamTable.h"

namespace starsift {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

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

}  // namespace
}  // namespace starsift

#include "params/ParamTable.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "params/ExtendedParams.h"

namespace starsift {
namespace {

struct ExpectedRow {
  std::string_view name;
  std::string_view defaultText;
  std::string_view help;
};

/// Typed in apart from the table: a change there has to be meant.
constexpr std::array<ExpectedRow, 25> expectedRows = {{
    {"help", "0", "Display this help information."},
    {"verb", "0", "To receive (detailed) runtime statistics, set this parameter to 1 or 2."},
    {"consistency", "0",
     "By setting this switch the lattice transformations are tracked and consulted to detect "
     "computing / overflow errors."},
    {"eenum", "1",
     "Enables the essential enumeration algorithm, which helps to find euclidean short vectors "
     "in a deterministic way (see also: --deep, --beta, --etime, --btime, --eprune)."},
    {"beta", "20",
     "The enumeration algorithm operates on blocks of 20 vectors per default, which can be "
     "changed utilizing this parameter (see also: --eenum, --etime, --btime)."},
    {"eprune", "3",
     "The enumeration trees can be pruned, which will speed up the enumeration. To enable "
     "moderate pruning use 1 - if you prefer more aggressive pruning, then use 2 or 3 (see: "
     "also --eenum, --beta)."},
    {"btime", "0",
     "This defines a bound for the maximum time (in seconds) to spent, when enumerating a "
     "block of lattice vectors (see also: --etime, --beta, --eenum)."},
    {"etime", "0",
     "This defines a bound for the maximum time (in seconds) to spent for the enumeration of "
     "lattice vectors (see also: --btime, --beta, --eenum)."},
    {"deep", "0",
     "The enumeration algorithm should do some kind of backtracking, when a short vector has "
     "been found - the short vector is not only compared with the basis vector of the current "
     "stage, but also with base vectors, which are stages ahead (see also: --eenum)."},
    {"collectLimit", "100",
     "The collection limit defines the maximum size of the set containing the collected, good "
     "vectors. (see also:  --pair, --sieve, --sample)."},
    {"pair", "1",
     "This switch enables a heuristic pairwise recombination method, which helps to discover "
     "vectors with small sup-norms and collects these within a set of heuristically good "
     "vectors (see also: --pairLimit, --collectLimit)."},
    {"pairLimit", "10",
     "The pair limit defines the maximum amount of vectors which are chosen from the "
     "collection set for pairing purposes (see also:  --pair, --collectLimit)."},
    {"sieve", "0",
     "This switch enables a sieving method on the collection set of heuristically good "
     "vectors, which helps to discover vectors with small sup-norms (see also: --collectLimit)."},
    {"sample", "0",
     "To enable a algorithm, which samples random (but probably short) vectors and collects "
     "them within the sets containing good vectors (see also: --sampleLimit, --collectLimit)."},
    {"sampleLimit", "1000",
     "The sample limit defines how many vectors should be chosen, when using random sampling "
     "(see also: --sample)."},
    {"scale", "0", "Enables a scaling routine, which trims the lattice towards feasibility."},
    {"translate", "0",
     "Enables a translation routine, which trims the lattice towards feasibility."},
    {"reinsert", "1",
     "Enables a routine to re-insert best vectors into the lattice after each progressless "
     "iteration."},
    {"variate", "1",
     "Enables a variation of lattice base vectors (sorting / shuffling) after each "
     "progressless iteration."},
    {"rtime", "0", "Terminate the program after the submitted number of seconds has been reached."},
    {"iters", "-1", "Terminate the program after the submitted number of iterations."},
    {"sol", "1", "Terminate the program, when the submitted number of solutions has been found."},
    {"bench", "0",
     "A value > 0 enables a benchmark run. The read of the lat / sol file is skipped and the "
     "secondsUntilDiscovered property of best vectors gets multiplied with the value of this "
     "parameter."},
    {"snorm", "-1",
     "Terminate the program, when a solution has been found, whose slack norm <= the provided "
     "value."},
    {"tnorm", "-inf",
     "Terminate the program, when a solution has been found, whose target norm <= the provided "
     "value."},
}};

class ParamTableRow : public testing::TestWithParam<std::size_t> {};

TEST_P(ParamTableRow, HasNameDefaultAndHelpAsUsersKnowThem) {
  const ParamRow& row = paramTable()[GetParam()];
  const ExpectedRow& expected = expectedRows[GetParam()];
  EXPECT_EQ(row.name, expected.name);
  EXPECT_EQ(row.defaultText, expected.defaultText);
  EXPECT_EQ(row.help, expected.help);
}

TEST_P(ParamTableRow, IsTheParameterRegisteredAtItsPlace) {
  const ExtendedParams<long double> params;
  const ParamInfo& parameter = *params.table().element(static_cast<Index>(GetParam()) + 1).right;
  const ExpectedRow& expected = expectedRows[GetParam()];
  EXPECT_EQ(parameter.name(), expected.name);
  EXPECT_EQ(parameter.text(), expected.defaultText);
  EXPECT_EQ(parameter.defaultText(), expected.defaultText);
  EXPECT_EQ(parameter.help(), expected.help);
}

TEST_P(ParamTableRow, TellsWhetherItIsASwitch) {
  const ExtendedParams<QQ> params;
  const ParamInfo& parameter = *params.table().element(static_cast<Index>(GetParam()) + 1).right;
  EXPECT_EQ(parameter.isBool(), paramTable()[GetParam()].kind == ParamKind::boolean);
}

std::string nameOfRow(const testing::TestParamInfo<std::size_t>& place) {
  return std::string(expectedRows[place.param].name);
}

INSTANTIATE_TEST_SUITE_P(All, ParamTableRow, testing::Range<std::size_t>(0, 25), nameOfRow);

TEST(ParamTable, HasTwentyFiveRows) {
  EXPECT_EQ(paramTable().size(), 25U);
}

using Names = std::vector<std::string>;

TEST(ParamTable, HasARowForEachParameterOfALatticeAndNoOther) {
  Names rows;
  for (const ParamRow& row : paramTable()) rows.emplace_back(row.name);
  Names members;
  const ExtendedParams<long double> params;
  for (const auto& entry : params.table()) members.push_back(entry.left);
  EXPECT_EQ(members, rows);
}

TEST(ParamTable, FindsARowByItsName) {
  EXPECT_EQ(paramRow("beta").defaultText, "20");
  EXPECT_EQ(&paramRow("help"), &paramTable().front());
  EXPECT_EQ(&paramRow("tnorm"), &paramTable().back());
}

TEST(ParamTable, NamesEachTypeForTheDocumentation) {
  EXPECT_EQ(paramKindName(ParamKind::boolean), "bool");
  EXPECT_EQ(paramKindName(ParamKind::integer), "long");
  EXPECT_EQ(paramKindName(ParamKind::natural), "unsigned long");
  EXPECT_EQ(paramKindName(ParamKind::real), "float");
  EXPECT_EQ(paramKindName(ParamKind::guardedInteger), "long");
  EXPECT_EQ(paramKindName(ParamKind::number), "number");
}

}  // namespace
}  // namespace starsift

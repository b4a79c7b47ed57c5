#include "params/Params.h"

#include <iterator>
#include <sstream>
#include <string>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

const std::string defaultLine =
    "--help=0 --verb=0 --consistency=0 --eenum=1 --beta=20 --eprune=3 --btime=0 --etime=0 "
    "--deep=0 --collectLimit=100 --pair=1 --pairLimit=10 --sieve=0 --sample=0 "
    "--sampleLimit=1000 --scale=0 --translate=0 --reinsert=1 --variate=1 --rtime=0 --iters=-1 "
    "--sol=1 --bench=0";

std::string written(const Params& params) {
  std::ostringstream stream;
  stream << params;
  return stream.str();
}

void readText(Params& params, const std::string& text) {
  std::istringstream stream(text);
  stream >> params;
}

/// What the stream holds behind a set that is read from the text.
std::string restBehind(const std::string& text) {
  Params params;
  std::istringstream stream(text);
  stream >> params;
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Params, WritesAllParametersInTheOrderOfTheTable) {
  EXPECT_EQ(written(Params()), defaultLine);
}

TEST(Params, HasTheCommaAsItsDelimiter) {
  EXPECT_EQ(Params().separators(), ", ");
}

TEST(Params, ReadsBackWhatItWrote) {
  Params params;
  params.beta = 25;
  params.deep = true;
  params.bench = 1.5F;
  params.rtime = 60;
  Params back;
  readText(back, written(params));
  EXPECT_EQ(written(back), written(params));
  EXPECT_EQ(back.beta, 25);
  EXPECT_TRUE(back.deep);
  EXPECT_EQ(back.bench, 1.5F);
  EXPECT_EQ(back.rtime.get(), 60);
}

TEST(Params, ReadingSetsTheNamedOnesAndKeepsTheOthers) {
  Params params;
  params.sol = 5;
  readText(params, "--beta=30 --eenum=0");
  EXPECT_EQ(params.beta, 30);
  EXPECT_FALSE(params.eenum);
  EXPECT_EQ(params.sol, 5);
  EXPECT_EQ(params.eprune, 3);
}

TEST(Params, ReadingCallsNoCallback) {
  Params params;
  bool called = false;
  ParamInfo::Callback callback = [&called](const std::string&) { called = true; };
  params.beta.setCallback(callback);
  readText(params, "--beta=30");
  EXPECT_FALSE(called);
}

TEST(Params, ReadingStopsAtTheLineFeedAndLeavesIt) {
  EXPECT_EQ(restBehind("--beta=30 --sol=2 \t\nnext"), "\nnext");
  EXPECT_EQ(restBehind("--beta=30\r\nnext"), "\nnext");
  EXPECT_EQ(restBehind("--beta=30 // note\nnext"), "\nnext");
}

TEST(Params, ReadingSkipsCommentsBetweenItems) {
  Params params;
  readText(params, " /* a */ --beta=30 /* b */ --sol=2 // c");
  EXPECT_EQ(params.beta, 30);
  EXPECT_EQ(params.sol, 2);
}

class EmptyParameterText : public testing::TestWithParam<const char*> {};

TEST_P(EmptyParameterText, LeavesASetWithoutParameters) {
  Params params;
  readText(params, GetParam());
  EXPECT_EQ(params.table().dimension(), 0);
  EXPECT_EQ(written(params), "");
}

INSTANTIATE_TEST_SUITE_P(All, EmptyParameterText,
                         testing::Values("", "  \t", "  \t\n", "\n", "\r\n", "/* c */ // d\n"));

TEST(Params, EmptyTextLeavesItsLineFeedAndTheNextLine) {
  EXPECT_EQ(restBehind(" \t\n--beta=30"), "\n--beta=30");
}

TEST(Params, KeepTheirValuesInAnEmptiedSet) {
  Params params;
  params.beta = 30;
  readText(params, "\n");
  EXPECT_EQ(params.beta, 30);
}

TEST(Params, LeaveOutAParameterWithAnEmptyText) {
  Params params;
  params.help = "";
  params.bench = "";
  params.verb = "";
  EXPECT_EQ(written(params).substr(0, 16), "--consistency=0 ");
  EXPECT_TRUE(written(params).ends_with(" --sol=1"));
}

TEST(Params, LeaveOutAParameterWithoutAName) {
  Params params;
  std::istringstream stream("--=5");
  stream >> params.help;
  EXPECT_EQ(written(params).substr(0, 9), "--verb=0 ");
}

TEST(Params, FailOnAnItemWithoutAnEqualsSign) {
  Params params;
  EXPECT_FAILS_WITH(readText(params, "--beta"), "Malformed parameter: beta");
  EXPECT_FAILS_WITH(readText(params, "--sol=1 --beta --eenum=0"), "Malformed parameter: beta");
}

TEST(Params, FailOnAnUnknownName) {
  Params params;
  EXPECT_FAILS_WITH(readText(params, "--gamma=1=2"), "Malformed parameter: gamma=1=2");
  EXPECT_FAILS_WITH(readText(params, "--Beta=1"), "Malformed parameter: Beta=1");
  EXPECT_FAILS_WITH(readText(params, "--=1"), "Malformed parameter: =1");
}

TEST(Params, FailOnEveryNameOnceEmptied) {
  Params params;
  readText(params, "");
  EXPECT_FAILS_WITH(readText(params, "--beta=1"), "Malformed parameter: beta=1");
}

TEST(Params, CopyPointsToItsOwnParameters) {
  Params params;
  params.beta = 30;
  Params copy(params);
  EXPECT_EQ(*copy.table().find("beta"), &copy.beta);
  copy.beta = 40;
  EXPECT_EQ(written(params).find("--beta=40"), std::string::npos);
  EXPECT_NE(written(copy).find("--beta=40"), std::string::npos);
}

TEST(Params, CopyHasTextsAndTypedValues) {
  Params params;
  params.beta = "+30";
  params.rtime = 9;
  const Params copy(params);
  EXPECT_EQ(written(copy), written(params));
  EXPECT_EQ(copy.beta, 30);
  EXPECT_EQ(copy.rtime.get(), 9);
}

TEST(Params, CopyLeavesNoParameterOut) {
  Params params;
  for (const auto& entry : params.table()) entry.right->setTextSilently("6");
  const Params copy(params);
  EXPECT_EQ(written(copy), written(params));
  EXPECT_EQ(copy.verb, 6);
  EXPECT_EQ(copy.bench, 6.0F);
}

TEST(Params, AssignmentCallsNoCallbackAndKeepsIt) {
  Params params;
  int calls = 0;
  ParamInfo::Callback callback = [&calls](const std::string&) { ++calls; };
  params.beta.setCallback(callback);
  Params other;
  other.beta = 30;
  params = other;
  EXPECT_EQ(params.beta, 30);
  EXPECT_EQ(*params.table().find("beta"), &params.beta);
  EXPECT_EQ(calls, 0);
  params.beta = 31;
  EXPECT_EQ(calls, 1);
}

TEST(Params, AssignmentCarriesTheEmptyStateBothWays) {
  Params emptied;
  readText(emptied, "");
  Params params;
  params = emptied;
  EXPECT_EQ(written(params), "");
  params = Params();
  EXPECT_EQ(written(params), defaultLine);
}

TEST(Params, LimitASearchByPassesAndByTimeOnly) {
  Params params;
  params.sol = 0;
  EXPECT_FALSE(params.hasPassOrTimeLimit());
  params.iters = 0;
  EXPECT_TRUE(params.hasPassOrTimeLimit());
  params.iters = -1;
  params.rtime = 1;
  EXPECT_TRUE(params.hasPassOrTimeLimit());
}

TEST(Params, AssignmentToItselfChangesNothing) {
  Params params;
  params.beta = 30;
  const Params& same = params;
  params = same;
  EXPECT_EQ(params.beta, 30);
  EXPECT_EQ(params.table().dimension(), 23);
}

}  // namespace
}  // namespace starsift

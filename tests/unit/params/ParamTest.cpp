#include "params/Param.h"

#include <limits>
#include <sstream>
#include <vector>

#include "core/HostTools.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

/// One parameter of each kind, outside a set.
struct Parameters {
  ParamRegistry registry;
  Param<bool> pair{"pair", registry};
  Param<long> beta{"beta", registry};
  Param<unsigned long> pairLimit{"pairLimit", registry};
  Param<float> bench{"bench", registry};
  MutexParam<long> rtime{"rtime", registry};
};

/// A callback that keeps the old texts it is given.
ParamInfo::Callback remember(std::vector<std::string>& oldTexts) {
  return [&oldTexts](const std::string& oldText) { oldTexts.push_back(oldText); };
}

std::string written(const ParamInfo& parameter) {
  std::ostringstream stream;
  stream << parameter;
  return stream.str();
}

TEST(Param, StartsAtItsDefault) {
  const Parameters parameters;
  EXPECT_EQ(parameters.beta.get(), 20);
  EXPECT_EQ(parameters.beta.text(), "20");
  EXPECT_TRUE(parameters.pair);
  EXPECT_EQ(parameters.rtime.get(), 0);
}

TEST(Param, IsAtItsDefaultHoweverThatIsWritten) {
  Parameters parameters;
  parameters.beta = "+020";
  parameters.bench = "-0.0";
  parameters.rtime = "00";
  EXPECT_TRUE(parameters.beta.isDefault());
  EXPECT_TRUE(parameters.bench.isDefault());
  EXPECT_TRUE(parameters.rtime.isDefault());
  EXPECT_TRUE(parameters.pair.isDefault());
}

TEST(Param, IsAtAnotherValueThanItsDefault) {
  Parameters parameters;
  parameters.beta = "21";
  parameters.bench = "1e-30";
  parameters.rtime = "1";
  parameters.pair = "0";
  EXPECT_FALSE(parameters.beta.isDefault());
  EXPECT_FALSE(parameters.bench.isDefault());
  EXPECT_FALSE(parameters.rtime.isDefault());
  EXPECT_FALSE(parameters.pair.isDefault());
}

TEST(Param, IsEnteredIntoItsRegistry) {
  Parameters parameters;
  EXPECT_EQ(parameters.registry.find("beta"), &parameters.beta);
  EXPECT_EQ(parameters.registry.find("gamma"), nullptr);
}

TEST(Param, TakesAText) {
  Parameters parameters;
  parameters.beta = "30";
  EXPECT_EQ(parameters.beta, 30);
  EXPECT_EQ(parameters.beta.text(), "30");
}

TEST(Param, TakesATypedValueThroughItsText) {
  Parameters parameters;
  parameters.beta = 30;
  parameters.pair = false;
  parameters.bench = 0.5F;
  parameters.rtime = 12;
  EXPECT_EQ(parameters.beta.text(), "30");
  EXPECT_EQ(parameters.pair.text(), "0");
  EXPECT_EQ(parameters.bench.text(), "0.5");
  EXPECT_EQ(parameters.rtime.text(), "12");
  EXPECT_EQ(parameters.rtime.get(), 12);
}

TEST(Param, TakesALiteralForASwitchAsAText) {
  Parameters parameters;
  parameters.pair = "0";
  EXPECT_FALSE(parameters.pair);
}

TEST(Param, KeepsOnlyTheDigitsThatItsTextShows) {
  ParamRegistry registry;
  Param<long double> snorm("snorm", registry);
  snorm = 1234567.0L;
  EXPECT_EQ(snorm.text(), "1.23457e+06");
  EXPECT_EQ(snorm.get(), 1234570.0L);
}

TEST(Param, KeepsATextThatIsNoNumberAndLeavesTheRestToTheStream) {
  Parameters parameters;
  parameters.beta = "abc";
  EXPECT_EQ(parameters.beta.text(), "abc");
  EXPECT_EQ(parameters.beta, 0);
}

TEST(Param, KeepsItsTypedValueUnderAnEmptyText) {
  Parameters parameters;
  parameters.rtime = 12;
  parameters.rtime = "";
  EXPECT_EQ(parameters.rtime.get(), 12);
  parameters.beta = "";
  EXPECT_EQ(parameters.beta, 20);
  EXPECT_EQ(written(parameters.beta), "");
}

TEST(Param, KnowsTheInfinitiesInEveryType) {
  Parameters parameters;
  parameters.bench = "-inf";
  EXPECT_EQ(parameters.bench, -std::numeric_limits<float>::infinity());
  parameters.beta = "inf";
  EXPECT_EQ(parameters.beta, std::numeric_limits<long>::max());
  parameters.beta = "-inf";
  EXPECT_EQ(parameters.beta, std::numeric_limits<long>::min());
  parameters.pairLimit = "-inf";
  EXPECT_EQ(parameters.pairLimit, 0U);
  parameters.pair = "0";
  parameters.pair = "-inf";
  EXPECT_TRUE(parameters.pair);
  parameters.rtime = "inf";
  EXPECT_EQ(parameters.rtime.get(), std::numeric_limits<long>::max());
}

TEST(Param, OverQQReadsExponentsAndFractions) {
  ParamRegistry registry;
  Param<QQ> snorm("snorm", registry);
  EXPECT_EQ(snorm.get(), QQ(-1));
  snorm = "1.5e2";
  EXPECT_EQ(snorm.get(), QQ(150));
  snorm = "3:1/4";
  EXPECT_EQ(snorm.get(), QQ(13, 4));
  snorm = QQ(5, 2);
  EXPECT_EQ(snorm.text(), "2:1/2");
  snorm = "-inf";
  EXPECT_EQ(snorm.get(), -QQ::infinity());
}

TEST(Param, OverQQFailsOnATextThatIsNoNumber) {
  ParamRegistry registry;
  Param<QQ> snorm("snorm", registry);
  EXPECT_FAILS_WITH(snorm = "1.0", "QQ: parse error1");
}

TEST(Param, TellsTheCallbackTheOldTextBehindTheChange) {
  Parameters parameters;
  std::string seen;
  ParamInfo::Callback callback = [&](const std::string& oldText) {
    seen = oldText + " -> " + parameters.beta.text() + " = " + std::to_string(parameters.beta);
  };
  parameters.beta.setCallback(callback);
  parameters.beta = "30";
  EXPECT_EQ(seen, "20 -> 30 = 30");
}

TEST(Param, CallsTheCallbackForItsCurrentTextToo) {
  Parameters parameters;
  std::vector<std::string> oldTexts;
  ParamInfo::Callback callback = remember(oldTexts);
  parameters.beta.setCallback(callback);
  parameters.beta = "20";
  parameters.beta = 20;
  EXPECT_EQ(oldTexts, (std::vector<std::string>{"20", "20"}));
}

TEST(Param, ExchangesCallbacks) {
  Parameters parameters;
  std::vector<std::string> first;
  std::vector<std::string> second;
  ParamInfo::Callback callback = remember(first);
  parameters.beta.setCallback(callback);
  callback = remember(second);
  parameters.beta.setCallback(callback);
  parameters.beta = 1;
  callback("given back");
  EXPECT_EQ(first, std::vector<std::string>{"given back"});
  EXPECT_EQ(second, std::vector<std::string>{"20"});
}

TEST(Param, HasACallbackAtAnyTime) {
  Parameters parameters;
  ParamInfo::Callback callback;
  parameters.beta.setCallback(callback);
  callback("the one from the start");
  parameters.beta = 30;
  EXPECT_EQ(parameters.beta, 30);
}

TEST(Param, IsCopiedWithoutTheCallback) {
  Parameters source;
  source.beta = "+30";
  source.rtime = 7;
  Parameters target;
  std::vector<std::string> oldTexts;
  ParamInfo::Callback callback = remember(oldTexts);
  target.beta.setCallback(callback);
  target.beta.copyValue(source.beta);
  target.rtime.copyValue(source.rtime);
  EXPECT_EQ(target.beta.text(), "+30");
  EXPECT_EQ(target.beta, 30);
  EXPECT_EQ(target.rtime.get(), 7);
  EXPECT_TRUE(oldTexts.empty());
}

TEST(Param, IsWrittenAsAnOption) {
  const Parameters parameters;
  EXPECT_EQ(written(parameters.beta), "--beta=20");
  EXPECT_EQ(written(parameters.pair), "--pair=1");
}

TEST(Param, IsWrittenWithALimit) {
  const Parameters parameters;
  EXPECT_EQ(limitedText(parameters.beta, 0), "--beta=20");
  EXPECT_EQ(limitedText(parameters.beta, 4), "-- ... 20");
}

TEST(Param, ReadsNameTextAndTypedValueWithoutTheCallback) {
  Parameters parameters;
  std::vector<std::string> oldTexts;
  ParamInfo::Callback callback = remember(oldTexts);
  parameters.beta.setCallback(callback);
  std::istringstream stream("--beta=30");
  stream >> parameters.beta;
  EXPECT_EQ(parameters.beta, 30);
  EXPECT_TRUE(oldTexts.empty());
}

TEST(ParamInfo, HasTheCommaAsItsDelimiter) {
  EXPECT_EQ(ParamInfo().separators(), ", ");
}

TEST(ParamInfo, IsEmptyUntilItIsRead) {
  const ParamInfo item;
  EXPECT_EQ(item.name(), "");
  EXPECT_EQ(written(item), "");
  EXPECT_FALSE(item.isBool());
}

/// The item at the head of the text, as "name|value".
std::string itemOf(const std::string& text) {
  std::istringstream stream(text);
  ParamInfo item;
  stream >> item;
  return item.name() + "|" + item.text();
}

TEST(ParamInfo, ReadsOneItemAndLeavesTheRest) {
  std::istringstream stream("--beta=30 rest");
  ParamInfo item;
  stream >> item;
  std::string rest;
  std::getline(stream, rest);
  EXPECT_EQ(item.name(), "beta");
  EXPECT_EQ(item.text(), "30");
  EXPECT_EQ(rest, " rest");
}

TEST(ParamInfo, SkipsWhiteSpaceAndCommentsInFront) {
  EXPECT_EQ(itemOf(" \t\r\n/* c */ // d\n --beta=30"), "beta|30");
}

TEST(ParamInfo, DoesNotLookAtTheDashes) {
  EXPECT_EQ(itemOf("xxbeta=3"), "beta|3");
}

TEST(ParamInfo, SplitsAtTheFirstEqualsSign) {
  EXPECT_EQ(itemOf("--a=b=c"), "a|b=c");
}

TEST(ParamInfo, MayHaveAnEmptyValueOrName) {
  EXPECT_EQ(itemOf("--a= x"), "a|");
  EXPECT_EQ(itemOf("--=5"), "|5");
}

TEST(ParamInfo, FailsWithoutAnEqualsSign) {
  EXPECT_FAILS_WITH(itemOf("--beta 30"), "Malformed parameter: beta");
}

TEST(ParamInfo, FailsOnAnEmptyToken) {
  EXPECT_FAILS_WITH(itemOf(""), "Malformed parameter: ");
  EXPECT_FAILS_WITH(itemOf("-"), "Malformed parameter: ");
  EXPECT_FAILS_WITH(itemOf("-- beta=30"), "Malformed parameter: ");
}

}  // namespace
}  // namespace starsift

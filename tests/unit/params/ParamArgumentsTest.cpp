#include "params/ParamArguments.h"

#include <limits>

#include "numbers/QQFunctions.h"
#include "params/ExtendedParams.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

TEST(ParamArguments, SetWhatTheyNameAndLeaveTheRest) {
  ExtendedParams<QQ> params;
  readArguments(params, {"--sol=5", "--tnorm=-7/3", "--rtime=+60", "--bench=0.5", "--deep=1"});
  EXPECT_EQ(params.sol.get(), 5);
  EXPECT_EQ(params.tnorm.get(), QQ(-7) / QQ(3));
  EXPECT_EQ(params.rtime.get(), 60);
  EXPECT_EQ(params.bench.get(), 0.5F);
  EXPECT_TRUE(params.deep.get());
  EXPECT_EQ(params.iters.get(), -1);
}

TEST(ParamArguments, OfOneNameTheLastOneCounts) {
  ExtendedParams<QQ> params;
  readArguments(params, {"--sol=5", "--sol=7"});
  EXPECT_EQ(params.sol.get(), 7);
}

TEST(ParamArguments, MayBeInfinite) {
  ExtendedParams<QQ> params;
  readArguments(params, {"--iters=inf", "--tnorm=-inf"});
  EXPECT_EQ(params.iters.get(), std::numeric_limits<long>::max());
  EXPECT_TRUE(NumberTraits<QQ>::isInfinite(params.tnorm.get()));
}

void readOne(const std::string& argument) {
  ExtendedParams<QQ> params;
  readArguments(params, {argument});
}

TEST(ParamArguments, NeedAnEqualsSign) {
  EXPECT_FAILS_WITH(readOne("--beta"), "Malformed parameter: beta");
}

TEST(ParamArguments, NeedTwoDashesAndSomethingBehindThem) {
  EXPECT_FAILS_WITH(readOne("--"), "Malformed parameter: --");
  EXPECT_FAILS_WITH(readOne("-"), "Malformed parameter: -");
  EXPECT_FAILS_WITH(readOne("-x"), "Malformed parameter: -x");
  EXPECT_FAILS_WITH(readOne("-sol=2"), "Malformed parameter: -sol=2");
  EXPECT_FAILS_WITH(readOne("-xsol=2"), "Malformed parameter: -xsol=2");
}

TEST(ParamArguments, NeedAKnownName) {
  EXPECT_FAILS_WITH(readOne("--alpha=1"), "Malformed parameter: alpha=1");
  EXPECT_FAILS_WITH(readOne("--=1"), "Malformed parameter: =1");
}

TEST(ParamArguments, NeedAValueOfTheType) {
  EXPECT_FAILS_WITH(readOne("--sol=many"), "Malformed parameter: sol=many");
  EXPECT_FAILS_WITH(readOne("--sol=1.5"), "Malformed parameter: sol=1.5");
  EXPECT_FAILS_WITH(readOne("--sol="), "Malformed parameter: sol=");
  EXPECT_FAILS_WITH(readOne("--sol=+-5"), "Malformed parameter: sol=+-5");
  EXPECT_FAILS_WITH(readOne("--deep=2"), "Malformed parameter: deep=2");
  EXPECT_FAILS_WITH(readOne("--bench=x"), "Malformed parameter: bench=x");
  EXPECT_FAILS_WITH(readOne("--collectLimit=-1"), "Malformed parameter: collectLimit=-1");
}

TEST(ParamArguments, NeedAValueThatTheTypeCanHold) {
  EXPECT_FAILS_WITH(readOne("--iters=9223372036854775808"),
                    "Malformed parameter: iters=9223372036854775808");
}

// Handed to the big number it would end as an exception that nobody catches.
TEST(ParamArguments, NeedADigitInFrontOfThePoint) {
  EXPECT_FAILS_WITH(readOne("--tnorm=.5"), "Malformed parameter: tnorm=.5");
  EXPECT_FAILS_WITH(readOne("--tnorm=+-5"), "Malformed parameter: tnorm=+-5");
}

TEST(ParamArguments, NeedDigitsWhereANumberHasThem) {
  for (const std::string value : {"1x", "5-3", "1/x", "1/", "1.x", "1:x", "1/2/3", "1i", "1ex"})
    EXPECT_FAILS_WITH(readOne("--tnorm=" + value), "Malformed parameter: tnorm=" + value);
  EXPECT_FAILS_WITH(readOne("--snorm=1i"), "Malformed parameter: snorm=1i");
}

TEST(ParamArguments, TakeEveryFormOfANumber) {
  const auto tnormOf = [](const std::string& value) {
    ExtendedParams<QQ> params;
    readArguments(params, {"--tnorm=" + value});
    return params.tnorm.get();
  };
  EXPECT_EQ(tnormOf("1:1/2"), QQ(3, 2));
  EXPECT_EQ(tnormOf("+0x10"), QQ(16));
  EXPECT_EQ(tnormOf("1.5e2"), QQ(150));
  EXPECT_EQ(tnormOf("1e"), QQ(1));
  EXPECT_EQ(tnormOf("1e1e1"), pow(QQ(10), QQ(10)));
}

TEST(ParamArguments, LeaveOtherNumbersToTheReportsOfNumbers) {
  EXPECT_FAILS_WITH(readOne("--tnorm=1.0"), "QQ: parse error1");
}

TEST(ParamArguments, HoldOneItemEach) {
  EXPECT_FAILS_WITH(readOne("--sol=1 --verb=2"), "Malformed parameter: sol=1 --verb=2");
  EXPECT_FAILS_WITH(readOne("--sol=1\n"), "Malformed parameter: sol=1\n");
}

}  // namespace
}  // namespace starsift

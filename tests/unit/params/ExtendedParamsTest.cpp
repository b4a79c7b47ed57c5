#include "params/ExtendedParams.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "system/Console.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

/// An owner that keeps a list of what it was told.
class Owner : public ParamReactions {
 public:
  void consistencyChanged(bool on) override { heard.emplace_back(on ? "on" : "off"); }
  void scaleChanged() override { heard.emplace_back("scale"); }
  void translateChanged() override { heard.emplace_back("translate"); }

  std::vector<std::string> heard;
};

using Heard = std::vector<std::string>;

std::string written(const Params& params) {
  std::ostringstream stream;
  stream << params;
  return stream.str();
}

template <class T>
class ExtendedParamsOver : public testing::Test {
 protected:
  void TearDown() override { consoleState() = {}; }

  Owner owner;
  ExtendedParams<T> params{&owner};
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(ExtendedParamsOver, LatticeNumbers);

TYPED_TEST(ExtendedParamsOver, EndTheLineWithTheTwoNorms) {
  EXPECT_TRUE(
      written(this->params)
          .starts_with(
              "--help=0 --verb=0 --consistency=0 --eenum=1 --beta=20 --eprune=3 --btime=0"));
  EXPECT_TRUE(written(this->params).ends_with(" --bench=0 --snorm=-1 --tnorm=-inf"));
}

TYPED_TEST(ExtendedParamsOver, StartAtNormsThatNoStarReaches) {
  EXPECT_EQ(this->params.snorm.get(), TypeParam(-1));
  EXPECT_EQ(this->params.tnorm.get(), -NumberTraits<TypeParam>::infinity());
}

TYPED_TEST(ExtendedParamsOver, AreAtTheDefaultHoweverItIsWritten) {
  this->params.snorm = "-01";
  this->params.tnorm = "-inf";
  EXPECT_TRUE(this->params.snorm.isDefault());
  EXPECT_TRUE(this->params.tnorm.isDefault());
  this->params.snorm = "-2";
  this->params.tnorm = "inf";
  EXPECT_FALSE(this->params.snorm.isDefault());
  EXPECT_FALSE(this->params.tnorm.isDefault());
}

TYPED_TEST(ExtendedParamsOver, LimitASearchByEitherNorm) {
  EXPECT_FALSE(this->params.hasNormLimit());
  this->params.snorm = "0";
  EXPECT_TRUE(this->params.hasNormLimit());
  this->params.snorm = "-1";
  this->params.tnorm = "-300";
  EXPECT_TRUE(this->params.hasNormLimit());
}

TYPED_TEST(ExtendedParamsOver, ReadTheNormsOfAText) {
  std::istringstream("--snorm=2.5 --tnorm=inf") >> this->params;
  EXPECT_EQ(this->params.snorm.get() + this->params.snorm.get(), TypeParam(5));
  EXPECT_EQ(this->params.tnorm.get(), NumberTraits<TypeParam>::infinity());
}

TYPED_TEST(ExtendedParamsOver, TellTheOwnerOfChanges) {
  this->params.consistency = true;
  this->params.scale = "1";
  this->params.translate = true;
  this->params.consistency = false;
  EXPECT_EQ(this->owner.heard, (Heard{"on", "scale", "translate", "off"}));
}

TYPED_TEST(ExtendedParamsOver, TellTheOwnerNothingWhenTheTextStays) {
  this->params.consistency = "0";
  this->params.scale = false;
  this->params.translate = "0";
  EXPECT_EQ(this->owner.heard, Heard{});
}

TYPED_TEST(ExtendedParamsOver, TellTheOwnerNothingWhenTheyAreReadOrAssigned) {
  std::istringstream("--scale=1") >> this->params;
  ExtendedParams<TypeParam> other;
  other.translate = true;
  this->params = other;
  EXPECT_TRUE(this->params.translate);
  EXPECT_EQ(this->owner.heard, Heard{});
}

TYPED_TEST(ExtendedParamsOver, StillTellTheirOwnerBehindAnAssignment) {
  this->params = ExtendedParams<TypeParam>();
  this->params.scale = true;
  EXPECT_EQ(this->owner.heard, Heard{"scale"});
}

TYPED_TEST(ExtendedParamsOver, HaveNoOwnerInACopy) {
  ExtendedParams<TypeParam> copy(this->params);
  copy.scale = true;
  EXPECT_EQ(this->owner.heard, Heard{});
  EXPECT_EQ(*copy.table().find("tnorm"), &copy.tnorm);
}

TYPED_TEST(ExtendedParamsOver, TurnExtendedOutputOnForVerbosityTwoAlone) {
  this->params.verb = 1;
  EXPECT_FALSE(extendedOutput());
  this->params.verb = 2;
  EXPECT_TRUE(extendedOutput());
  this->params.verb = 3;
  EXPECT_FALSE(extendedOutput());
}

TYPED_TEST(ExtendedParamsOver, LeaveExtendedOutputAloneWhenTheTextStays) {
  setExtendedOutput(true);
  this->params.verb = 0;
  EXPECT_TRUE(extendedOutput());
}

TYPED_TEST(ExtendedParamsOver, CopyTheNormsToo) {
  this->params.snorm = "0.5";
  const ExtendedParams<TypeParam> copy(this->params);
  EXPECT_EQ(copy.snorm.text(), "0.5");
  EXPECT_EQ(copy.snorm.get(), this->params.snorm.get());
}

TYPED_TEST(ExtendedParamsOver, CarryTheEmptyStateInCopiesAndAssignments) {
  std::istringstream("\n") >> this->params;
  EXPECT_EQ(written(ExtendedParams<TypeParam>(this->params)), "");
  this->params = ExtendedParams<TypeParam>();
  EXPECT_EQ(this->params.table().dimension(), 25);
}

TEST(ConvertedParams, HaveTheSameTextAtTheirDefaults) {
  const ExtendedParams<long double> standard;
  ExtendedParams<QQ> exact;
  exact.snorm = 7;
  exact.beta = 7;
  exact.convertFrom(standard);
  EXPECT_EQ(written(exact), written(standard));
  EXPECT_EQ(exact.tnorm.get(), -QQ::infinity());
}

TEST(ConvertedParams, TakeTheNormsInTheTextOfTheirNumberType) {
  ExtendedParams<QQ> exact;
  exact.snorm = "5/2";
  exact.beta = "+30";
  ExtendedParams<long double> standard;
  standard.convertFrom(exact);
  EXPECT_EQ(standard.snorm.get(), 2.5L);
  EXPECT_EQ(standard.snorm.text(), "2.5");
  EXPECT_EQ(standard.beta.text(), "+30");
  ExtendedParams<QQ> back;
  back.convertFrom(standard);
  EXPECT_EQ(back.snorm.get(), QQ(5, 2));
  EXPECT_EQ(back.snorm.text(), "2:1/2");
}

TEST(ConvertedParams, ShowAllDigitsOfANorm) {
  ExtendedParams<QQ> exact;
  exact.tnorm = "123456789012345678";
  ExtendedParams<long double> standard;
  standard.convertFrom(exact);
  EXPECT_EQ(standard.tnorm.text(), "123456789012345678");
}

TEST(ConvertedParams, DoNotReadTextsThatOnlyTheOtherTypeUnderstands) {
  ExtendedParams<long double> standard;
  standard.snorm = "1.0";
  ExtendedParams<QQ> exact;
  exact.convertFrom(standard);
  EXPECT_EQ(exact.snorm.get(), QQ(1));
  EXPECT_EQ(exact.snorm.text(), "1");
}

TEST(ConvertedParams, StayAsTheyAreWhenANormDoesNotFit) {
  ExtendedParams<QQ> exact;
  exact.beta = 30;
  exact.tnorm = "1/3";
  ExtendedParams<long double> standard;
  EXPECT_THROW(standard.convertFrom(exact), PostCommaPrecisionException);
  EXPECT_EQ(standard.beta, 20);
  EXPECT_EQ(standard.snorm.text(), "-1");
}

TEST(ConvertedParams, CallNoCallback) {
  Owner owner;
  ExtendedParams<QQ> exact(&owner);
  ExtendedParams<long double> standard;
  standard.scale = true;
  exact.convertFrom(standard);
  EXPECT_TRUE(exact.scale);
  EXPECT_EQ(owner.heard, Heard{});
}

}  // namespace
}  // namespace starsift

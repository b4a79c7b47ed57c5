#include "stars/TimeVector.h"

#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>
#include <utility>

#include "support/fixtures/LossyConversion.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::textOf;

template <class Kind>
class TimeVectorKind : public ::testing::Test {};
using Kinds = ::testing::Types<TimeVector<long double>, TargetVector<long double>,
                               BackupVector<long double>, TimeVector<long>>;
TYPED_TEST_SUITE(TimeVectorKind, Kinds);

TYPED_TEST(TimeVectorKind, StartsWithoutATime) {
  EXPECT_EQ(TypeParam().time, -1);
}

TYPED_TEST(TimeVectorKind, TakesItsComponentsAsAVectorDoes) {
  const TypeParam fromList{1, 2};
  EXPECT_EQ(fromList.dimension(), 2);
  const TypeParam fromCount(3);
  EXPECT_EQ(fromCount.dimension(), 3);
}

TYPED_TEST(TimeVectorKind, ForgetsTimeAndComponentsWhenItIsCleared) {
  TypeParam vector{1, 2};
  vector.time = 17;
  Array<typename std::remove_reference_t<decltype(vector[1])>>& base = vector;
  base.clear();
  EXPECT_EQ(vector.time, -1);
  EXPECT_EQ(vector.dimension(), 0);
  EXPECT_EQ(vector.capacity(), 2);
}

TYPED_TEST(TimeVectorKind, KeepsTheTimeOutOfTheText) {
  TypeParam vector{1, 2};
  vector.time = 17;
  EXPECT_EQ(textOf(vector), "[ 1 2 ]");
}

TYPED_TEST(TimeVectorKind, KeepsItsTimeWhenComponentsAreRead) {
  std::istringstream stream("[ 3 ]");
  TypeParam vector{1, 2};
  vector.time = 17;
  stream >> vector;
  EXPECT_EQ(textOf(vector), "[ 3 ]");
  EXPECT_EQ(vector.time, 17);
}

TYPED_TEST(TimeVectorKind, CopiesAndMovesTheTime) {
  TypeParam vector{1, 2};
  vector.time = 17;
  TypeParam copy(vector);
  EXPECT_EQ(copy.time, 17);
  TypeParam moved;
  moved = std::move(copy);
  EXPECT_EQ(moved.time, 17);
  EXPECT_EQ(textOf(moved), "[ 1 2 ]");
}

TEST(TimeVector, ConvertsWithItsTime) {
  TimeVector<long double> source{1, 2};
  source.time = 17;
  TimeVector<long> target;
  target.convertFrom(source, true);
  EXPECT_EQ(textOf(target), "[ 1 2 ]");
  EXPECT_EQ(target.time, 17);
}

TEST(TimeVector, IsUnchangedAfterAConversionThatLoses) {
  TimeVector<long double> source{0.5L};
  source.time = 17;
  TimeVector<long> target{4};
  EXPECT_THROW(target.convertFrom(source, true), PrecisionException);
  EXPECT_EQ(textOf(target), "[ 4 ]");
  EXPECT_EQ(target.time, -1);
}

TEST(TargetVector, HasAnInfiniteNormWhileThereIsNone) {
  const TargetVector<long double> vector;
  EXPECT_EQ(vector.targetNorm, NumberTraits<long double>::infinity());
  EXPECT_EQ(vector.slackNorm, 0);
}

TEST(TargetVector, ConvertsItsValuesAndNorms) {
  TargetVector<long double> source{1};
  source.time = 17;
  source.targetValues = {4, 5};
  source.targetNorm = -9;
  source.slackNorm = 2;
  TargetVector<long> target;
  target.convertFrom(source, true);
  EXPECT_EQ(target.time, 17);
  EXPECT_EQ(textOf(target.targetValues), "[ 4 5 ]");
  EXPECT_EQ(target.targetNorm, -9);
  EXPECT_EQ(target.slackNorm, 2);
}

TEST(TargetVector, IsUnchangedAfterAConversionThatLosesInANorm) {
  TargetVector<long double> source{1};
  source.targetNorm = 1;
  source.slackNorm = 0.5L;
  TargetVector<long> target{4};
  target.targetNorm = 3;
  EXPECT_THROW(target.convertFrom(source, true), PrecisionException);
  EXPECT_EQ(textOf(target), "[ 4 ]");
  EXPECT_EQ(target.targetNorm, 3);
}

}  // namespace
}  // namespace starsift

#include "problem/FreedomDegree.h"

#include <gtest/gtest.h>

#include <sstream>

#include "core/SerializableArray.h"
#include "numbers/QQ.h"

namespace starsift {
namespace {

template <class T>
class FreedomDegreeOver : public testing::Test {
 protected:
  static T inf() { return NumberTraits<T>::infinity(); }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(FreedomDegreeOver, LatticeNumbers);

TYPED_TEST(FreedomDegreeOver, FiniteBoundsMakeABoundedVariable) {
  EXPECT_EQ(freedomDegree(TypeParam(-1), TypeParam(3)), FreedomDegree::bounded);
}

TYPED_TEST(FreedomDegreeOver, OnlyTheLowerSideIsFree) {
  EXPECT_EQ(freedomDegree(TypeParam(-this->inf()), TypeParam(3)), FreedomDegree::leftFree);
}

TYPED_TEST(FreedomDegreeOver, OnlyTheUpperSideIsFree) {
  EXPECT_EQ(freedomDegree(TypeParam(-1), this->inf()), FreedomDegree::rightFree);
}

TYPED_TEST(FreedomDegreeOver, BothSidesAreFree) {
  EXPECT_EQ(freedomDegree(TypeParam(-this->inf()), this->inf()), FreedomDegree::free);
}

TYPED_TEST(FreedomDegreeOver, LowerBoundOfPlusInfinityIsNoFreeSide) {
  EXPECT_EQ(freedomDegree(this->inf(), this->inf()), FreedomDegree::rightFree);
}

TYPED_TEST(FreedomDegreeOver, UpperBoundOfMinusInfinityIsNoFreeSide) {
  EXPECT_EQ(freedomDegree(TypeParam(-this->inf()), TypeParam(-this->inf())),
            FreedomDegree::leftFree);
}

TEST(FreedomDegree, NumbersOfTheKindsAreFixed) {
  EXPECT_EQ(static_cast<int>(FreedomDegree::bounded), 0);
  EXPECT_EQ(static_cast<int>(FreedomDegree::leftFree), 1);
  EXPECT_EQ(static_cast<int>(FreedomDegree::rightFree), 2);
  EXPECT_EQ(static_cast<int>(FreedomDegree::free), 3);
}

TEST(FreedomDegree, ListOfKindsReadsBackWhatItWrote) {
  SerializableArray<FreedomDegree> kinds;
  kinds.resize(4, false);
  kinds[1] = FreedomDegree::free;
  kinds[2] = FreedomDegree::bounded;
  kinds[3] = FreedomDegree::rightFree;
  kinds[4] = FreedomDegree::leftFree;
  std::stringstream stream;
  stream << kinds;
  EXPECT_EQ(stream.str(), "[ 3,0,2,1 ]");
  SerializableArray<FreedomDegree> back;
  stream >> back;
  ASSERT_EQ(back.dimension(), 4);
  EXPECT_TRUE(std::equal(kinds.begin(), kinds.end(), back.begin()));
}

TEST(FreedomDegree, OtherNumbersFailTheStream) {
  std::istringstream stream("4");
  FreedomDegree kind = FreedomDegree::leftFree;
  EXPECT_FALSE(stream >> kind);
  EXPECT_EQ(kind, FreedomDegree::leftFree);
}

TEST(FreedomDegree, NegativeNumbersFailTheStream) {
  std::istringstream stream("-1");
  FreedomDegree kind = FreedomDegree::leftFree;
  EXPECT_FALSE(stream >> kind);
}

}  // namespace
}  // namespace starsift

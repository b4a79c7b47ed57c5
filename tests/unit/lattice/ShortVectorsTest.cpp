#include "lattice/state/ShortVectors.h"

#include <gtest/gtest.h>

#include <string>

#include "numbers/QQ.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::textOf;

template <class T>
class ShortVectorsOver : public testing::Test {
 protected:
  bool offer(int x, int y, int z) { return collection.offer({T(x), T(y), T(z)}); }
  std::string content() const {
    std::string text;
    for (const auto& entry : collection.entries()) text += textOf(*entry.vector);
    return text;
  }

  ShortVectors<T> collection;
};

using Numbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(ShortVectorsOver, Numbers);

TYPED_TEST(ShortVectorsOver, TakesNothingBeforeItIsOpened) {
  EXPECT_FALSE(this->offer(1, 0, 0));
  EXPECT_EQ(this->content(), "");
}

TYPED_TEST(ShortVectorsOver, SupNormComesBeforeLength) {
  this->collection.open(9, 1);
  EXPECT_TRUE(this->offer(3, 0, 0));
  EXPECT_TRUE(this->offer(2, 2, 2));
  EXPECT_TRUE(this->offer(0, 2, 1));
  EXPECT_EQ(this->content(), "[ 0 2 1 ][ 2 2 2 ][ 3 0 0 ]");
}

TYPED_TEST(ShortVectorsOver, VectorAndItsNegativeAreOne) {
  this->collection.open(9, 1);
  EXPECT_TRUE(this->offer(1, 2, -3));
  EXPECT_FALSE(this->offer(-1, -2, 3));
  EXPECT_FALSE(this->offer(1, 2, -3));
  EXPECT_EQ(this->content(), "[ -1 -2 3 ]");
}

TYPED_TEST(ShortVectorsOver, VectorsOfEqualNormsAreAllKept) {
  this->collection.open(9, 1);
  EXPECT_TRUE(this->offer(1, 0, 0));
  EXPECT_TRUE(this->offer(0, 0, 1));
  EXPECT_TRUE(this->offer(0, 1, 0));
  EXPECT_EQ(this->content(), "[ 0 0 1 ][ 0 1 0 ][ 1 0 0 ]");
}

TYPED_TEST(ShortVectorsOver, ShorterVectorReplacesTheLastOneOfAFullCollection) {
  this->collection.open(2, 1);
  this->offer(5, 0, 0);
  this->offer(4, 0, 0);
  EXPECT_FALSE(this->collection.mayTake({TypeParam(6), TypeParam(0), TypeParam(0)}));
  EXPECT_FALSE(this->offer(0, 5, 0));
  EXPECT_TRUE(this->offer(0, 3, 0));
  EXPECT_EQ(this->content(), "[ 0 3 0 ][ 4 0 0 ]");
}

TYPED_TEST(ShortVectorsOver, ZeroIsNoVectorOfACollection) {
  this->collection.open(2, 1);
  EXPECT_FALSE(this->offer(0, 0, 0));
}

TYPED_TEST(ShortVectorsOver, CoordinatesBeforeTheFirstDoNotCount) {
  this->collection.open(1, 2);
  EXPECT_TRUE(this->offer(0, 2, 0));
  EXPECT_TRUE(this->offer(70, 1, 0));
  EXPECT_EQ(this->content(), "[ 70 1 0 ]");
  EXPECT_TRUE(this->collection.supNormOf({TypeParam(70), TypeParam(-2), TypeParam(1)}) ==
              TypeParam(2));
}

TYPED_TEST(ShortVectorsOver, LowerLimitDropsTheLongest) {
  this->collection.open(3, 1);
  for (const int x : {1, 2, 3}) this->offer(x, 0, 0);
  this->collection.open(2, 1);
  EXPECT_EQ(this->content(), "[ 1 0 0 ][ 2 0 0 ]");
}

TYPED_TEST(ShortVectorsOver, OtherCoordinatesBeginANewCollection) {
  this->collection.open(3, 1);
  this->offer(1, 0, 0);
  this->collection.open(3, 2);
  EXPECT_EQ(this->content(), "");
}

TYPED_TEST(ShortVectorsOver, ConversionKeepsOrderMarksAndLimit) {
  this->collection.open(2, 1);
  this->offer(2, 0, 0);
  this->offer(1, 0, 0);
  this->collection.markPaired(1);
  ShortVectors<QQ> exact;
  exact.convertFrom(this->collection);
  this->collection.clear();
  this->collection.convertFrom(exact);
  EXPECT_EQ(this->content(), "[ 1 0 0 ][ 2 0 0 ]");
  EXPECT_FALSE(this->collection.entries()[0].isPaired);
  EXPECT_TRUE(this->collection.entries()[1].isPaired);
  EXPECT_FALSE(this->offer(3, 0, 0));
}

// Sums of such entries are exact, and nothing says that these were.
TEST(ShortVectors, LongDoublesBeyondTheSafeRangeAreNotTaken) {
  ShortVectors<long double> collection;
  collection.open(2, 1);
  EXPECT_FALSE(collection.offer({2e9L, 1}));
  EXPECT_TRUE(collection.offer({1e9L, 1}));
}

}  // namespace
}  // namespace starsift

// What holds for vectors over every number type. Values are small integers, which
// all types hold; each floor instantiates the suite over its own types.
#pragma once

#include <gtest/gtest.h>

#include <utility>

#include "core/Vector.h"
#include "support/ExpectFails.h"
#include "support/TextOf.h"

namespace starsift::test {

template <class T>
class VectorOver : public ::testing::Test {
 protected:
  using V = Vector<T>;
  static V of(std::initializer_list<int> values) {
    V vector(static_cast<Index>(values.size()));
    Index i = 0;
    for (const int value : values) vector[++i] = T(value);
    return vector;
  }
};
TYPED_TEST_SUITE_P(VectorOver);

TYPED_TEST_P(VectorOver, HasTheSettingOfANumericText) {
  const Vector<TypeParam> vector;
  EXPECT_EQ(vector.separators(), " ");
  EXPECT_TRUE(vector.mergeSeparators());
  EXPECT_TRUE(vector.secondFlag());
}

TYPED_TEST_P(VectorOver, StartsWithZeros) {
  EXPECT_EQ(textOf(Vector<TypeParam>(3)), "[ 0 0 0 ]");
}

TYPED_TEST_P(VectorOver, HasZeroComponentsWhereOthersWere) {
  auto vector = this->of({1, 2, 3, 4, 5});
  vector.resize(2, false);
  vector.resize(5, false);
  EXPECT_EQ(textOf(vector), "[ 1 2 0 0 0 ]");
}

TYPED_TEST_P(VectorOver, LeavesSlotZeroAloneWhenItGrows) {
  auto vector = this->of({1, 2});
  vector[0] = TypeParam(9);
  vector.resize(0, false);
  vector.resize(200, true);
  EXPECT_TRUE(vector[0] == TypeParam(9));
}

TYPED_TEST_P(VectorOver, AddsInPlace) {
  auto a = this->of({1, 2});
  auto& result = a += this->of({10, 20});
  EXPECT_EQ(textOf(a), "[ 11 22 ]");
  EXPECT_EQ(&result, &a);
}

TYPED_TEST_P(VectorOver, SubtractsInPlace) {
  auto a = this->of({1, 2});
  auto& result = a -= this->of({10, 20});
  EXPECT_EQ(textOf(a), "[ -9 -18 ]");
  EXPECT_EQ(&result, &a);
}

TYPED_TEST_P(VectorOver, MultipliesComponentWise) {
  auto a = this->of({3, -2});
  auto& result = a *= this->of({5, 4});
  EXPECT_EQ(textOf(a), "[ 15 -8 ]");
  EXPECT_EQ(&result, &a);
}

TYPED_TEST_P(VectorOver, DividesComponentWise) {
  auto a = this->of({15, -8});
  auto& result = a /= this->of({5, 4});
  EXPECT_EQ(textOf(a), "[ 3 -2 ]");
  EXPECT_EQ(&result, &a);
}

TYPED_TEST_P(VectorOver, TakesItselfAsOperand) {
  auto a = this->of({6, -7});
  const auto& same = a;
  a += same;
  EXPECT_EQ(textOf(a), "[ 12 -14 ]");
  a *= same;
  EXPECT_EQ(textOf(a), "[ 144 196 ]");
  a /= same;
  EXPECT_EQ(textOf(a), "[ 1 1 ]");
  a -= same;
  EXPECT_EQ(textOf(a), "[ 0 0 ]");
}

TYPED_TEST_P(VectorOver, LeavesSlotZeroOutOfArithmetic) {
  auto a = this->of({1});
  auto b = this->of({2});
  a[0] = TypeParam(7);
  b[0] = TypeParam(7);
  a += b;
  EXPECT_TRUE(a[0] == TypeParam(7));
  EXPECT_TRUE(a * b == TypeParam(6));
  b[0] = TypeParam(8);
  b[1] = TypeParam(3);
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(a >= b);
}

TYPED_TEST_P(VectorOver, AddsAndSubtractsCopies) {
  const auto a = this->of({1, 2});
  const auto b = this->of({3, 5});
  EXPECT_EQ(textOf(a + b), "[ 4 7 ]");
  EXPECT_EQ(textOf(a - b), "[ -2 -3 ]");
  EXPECT_EQ(textOf(a), "[ 1 2 ]");
}

TYPED_TEST_P(VectorOver, SumsTheDotProduct) {
  EXPECT_TRUE(this->of({1, 2, 3}) * this->of({4, -5, 6}) == TypeParam(12));
}

TYPED_TEST_P(VectorOver, HasTheDotProductZeroWithoutComponents) {
  EXPECT_TRUE(this->of({}) * this->of({}) == TypeParam(0));
}

TYPED_TEST_P(VectorOver, IsEqualAndOrderedBothWaysWithoutComponents) {
  EXPECT_TRUE(this->of({}) == this->of({}));
  EXPECT_TRUE(this->of({}) >= this->of({}));
  EXPECT_TRUE(this->of({}) <= this->of({}));
}

TYPED_TEST_P(VectorOver, IsEqualOnlyInAllComponents) {
  EXPECT_TRUE(this->of({1, 2}) == this->of({1, 2}));
  EXPECT_FALSE(this->of({1, 2}) == this->of({1, 3}));
  EXPECT_FALSE(this->of({1, 2}) == this->of({0, 2}));
}

TYPED_TEST_P(VectorOver, IsIdenticalOnlyInAllComponents) {
  EXPECT_TRUE(identical(this->of({1, 2}), this->of({1, 2})));
  EXPECT_FALSE(identical(this->of({1, 2}), this->of({1, 3})));
}

TYPED_TEST_P(VectorOver, ComparesEveryComponent) {
  EXPECT_TRUE(this->of({2, 2}) >= this->of({1, 2}));
  EXPECT_FALSE(this->of({2, 1}) >= this->of({1, 2}));
  EXPECT_TRUE(this->of({1, 2}) <= this->of({1, 3}));
  EXPECT_FALSE(this->of({1, 2}) <= this->of({2, 1}));
}

TYPED_TEST_P(VectorOver, NamesTheOperationThatSawAMismatch) {
  auto a = this->of({1});
  const auto b = this->of({1, 2});
  EXPECT_FAILS_WITH(a += b, "Vector: dimension mismatch1");
  EXPECT_FAILS_WITH(a -= b, "Vector: dimension mismatch2");
  EXPECT_FAILS_WITH(a *= b, "Vector: dimension mismatch3");
  EXPECT_FAILS_WITH(a /= b, "Vector: dimension mismatch4");
  EXPECT_FAILS_WITH(a + b, "Vector: dimension mismatch5");
  EXPECT_FAILS_WITH(a - b, "Vector: dimension mismatch6");
  EXPECT_FAILS_WITH(a * b, "Vector: dimension mismatch8");
  EXPECT_FAILS_WITH(static_cast<void>(a == b), "Vector: dimension mismatch9");
  EXPECT_FAILS_WITH(static_cast<void>(a >= b), "Vector: dimension mismatch10");
  EXPECT_FAILS_WITH(static_cast<void>(a <= b), "Vector: dimension mismatch11");
  EXPECT_FAILS_WITH(static_cast<void>(identical(a, b)), "Vector: dimension mismatch9");
}

TYPED_TEST_P(VectorOver, InsertsInTheMiddle) {
  auto vector = this->of({1, 2, 3});
  auto& result = vector.insertComponent(2, TypeParam(9));
  EXPECT_EQ(textOf(vector), "[ 1 9 2 3 ]");
  EXPECT_EQ(&result, &vector);
}

TYPED_TEST_P(VectorOver, AppendsBehindTheLastComponent) {
  auto vector = this->of({1, 2});
  vector.insertComponent(3, TypeParam(9));
  EXPECT_EQ(textOf(vector), "[ 1 2 9 ]");
}

TYPED_TEST_P(VectorOver, InsertsIntoAFreshVector) {
  Vector<TypeParam> vector;
  vector.insertComponent(1, TypeParam(9));
  EXPECT_EQ(textOf(vector), "[ 9 ]");
}

TYPED_TEST_P(VectorOver, InsertsAtSlotZero) {
  auto vector = this->of({1, 2});
  vector[0] = TypeParam(7);
  vector.insertComponent(0, TypeParam(9));
  EXPECT_EQ(textOf(vector), "[ 7 1 2 ]");
  EXPECT_TRUE(vector[0] == TypeParam(9));
}

TYPED_TEST_P(VectorOver, InsertsItsOwnComponent) {
  auto vector = this->of({1, 2});
  vector.insertComponent(1, vector[2]);
  EXPECT_EQ(textOf(vector), "[ 2 1 2 ]");
}

TYPED_TEST_P(VectorOver, RefusesToInsertOutOfRange) {
  auto vector = this->of({1, 2});
  EXPECT_FAILS_WITH(vector.insertComponent(4, TypeParam(9)), "insertComponent: invalid index");
  EXPECT_FAILS_WITH(vector.insertComponent(-1, TypeParam(9)), "insertComponent: invalid index");
}

TYPED_TEST_P(VectorOver, RemovesFromTheMiddle) {
  auto vector = this->of({1, 2, 3});
  auto& result = vector.removeComponent(2);
  EXPECT_EQ(textOf(vector), "[ 1 3 ]");
  EXPECT_EQ(&result, &vector);
}

TYPED_TEST_P(VectorOver, RemovesTheLastComponent) {
  auto vector = this->of({1, 2});
  vector.removeComponent(2);
  EXPECT_EQ(textOf(vector), "[ 1 ]");
  vector.removeComponent(1);
  EXPECT_EQ(textOf(vector), "[ ]");
}

TYPED_TEST_P(VectorOver, RemovesSlotZero) {
  auto vector = this->of({1, 2});
  vector.removeComponent(0);
  EXPECT_EQ(textOf(vector), "[ 2 ]");
  EXPECT_TRUE(vector[0] == TypeParam(1));
}

TYPED_TEST_P(VectorOver, RefusesToRemoveOutOfRange) {
  auto vector = this->of({1, 2});
  EXPECT_FAILS_WITH(vector.removeComponent(3), "removeComponent: invalid index");
  EXPECT_FAILS_WITH(vector.removeComponent(-1), "removeComponent: invalid index");
}

TYPED_TEST_P(VectorOver, HasNothingToRemoveWhileItIsEmpty) {
  Vector<TypeParam> vector;
  EXPECT_FAILS_WITH(vector.removeComponent(0), "array: dimension < 0");
}

TYPED_TEST_P(VectorOver, CopiesDeeplyAndMovesItsStorage) {
  auto source = this->of({1, 2});
  auto copy = source;
  copy[1] = TypeParam(9);
  EXPECT_EQ(textOf(source), "[ 1 2 ]");
  const TypeParam* const storage = source.data();
  const auto moved = std::move(source);
  EXPECT_EQ(moved.data(), storage);
  EXPECT_EQ(textOf(source), "[ ]");
}

REGISTER_TYPED_TEST_SUITE_P(
    VectorOver, HasTheSettingOfANumericText, StartsWithZeros, HasZeroComponentsWhereOthersWere,
    LeavesSlotZeroAloneWhenItGrows, AddsInPlace, SubtractsInPlace, MultipliesComponentWise,
    DividesComponentWise, TakesItselfAsOperand, LeavesSlotZeroOutOfArithmetic,
    AddsAndSubtractsCopies, SumsTheDotProduct, HasTheDotProductZeroWithoutComponents,
    IsEqualAndOrderedBothWaysWithoutComponents, IsEqualOnlyInAllComponents,
    IsIdenticalOnlyInAllComponents, ComparesEveryComponent, NamesTheOperationThatSawAMismatch,
    InsertsInTheMiddle, AppendsBehindTheLastComponent, InsertsIntoAFreshVector, InsertsAtSlotZero,
    InsertsItsOwnComponent, RefusesToInsertOutOfRange, RemovesFromTheMiddle,
    RemovesTheLastComponent, RemovesSlotZero, RefusesToRemoveOutOfRange,
    HasNothingToRemoveWhileItIsEmpty, CopiesDeeplyAndMovesItsStorage);

}  // namespace starsift::test

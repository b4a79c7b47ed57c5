#include "core/Array.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <string>
#include <utility>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

Array<long> counted(Index dimension) {
  Array<long> array(dimension);
  std::iota(array.data(), array.data() + dimension + 1, 100);
  return array;
}

TEST(Array, StartsWithoutStorage) {
  const Array<long> array;
  EXPECT_EQ(array.dimension(), 0);
  EXPECT_EQ(array.capacity(), 0);
  EXPECT_EQ(array.data(), nullptr);
  EXPECT_FALSE(array.isSet());
}

TEST(Array, OwnsNoStorageAfterResizingNothingToZero) {
  Array<long> array;
  array.resize(0, true);
  EXPECT_EQ(array.data(), nullptr);
  EXPECT_EQ(array.capacity(), 0);
}

TEST(Array, GrowsToExactlyWhatIsNeeded) {
  Array<long> array;
  array.resize(5, false);
  EXPECT_EQ(array.dimension(), 5);
  EXPECT_EQ(array.capacity(), 5);
}

TEST(Array, ReservesOneHundredBeyondNeed) {
  Array<long> array;
  array.resize(5, true);
  EXPECT_EQ(array.dimension(), 5);
  EXPECT_EQ(array.capacity(), 105);
}

TEST(Array, ReallocatesNothingWithinItsCapacity) {
  Array<long> array;
  array.resize(5, true);
  const long* const storage = array.data();
  array.resize(100, false);
  EXPECT_EQ(array.data(), storage);
  EXPECT_EQ(array.capacity(), 105);
  array.resize(105, true);
  EXPECT_EQ(array.data(), storage);
  EXPECT_EQ(array.capacity(), 105);
}

TEST(Array, ReservesByAFixedMarginAndNoFactor) {
  Array<long> array;
  array.resize(1000, false);
  array.resize(1001, true);
  EXPECT_EQ(array.capacity(), 1101);
}

TEST(Array, ShowsOldElementsAfterShrinkingAndGrowing) {
  Array<long> array = counted(5);
  array.resize(2, false);
  array.resize(5, false);
  EXPECT_EQ(array[5], 105);
}

TEST(Array, KeepsAllElementsAndSlotZeroWhenItGrows) {
  Array<long> array = counted(3);
  array.resize(4, true);
  EXPECT_EQ(array[0], 100);
  EXPECT_EQ(array[3], 103);
}

TEST(Array, MovesElementsOfClassTypeWhenItGrows) {
  Array<std::unique_ptr<long>> array(2);
  array[0] = std::make_unique<long>(7);
  array[2] = std::make_unique<long>(8);
  array.resize(500, false);
  ASSERT_NE(array[0], nullptr);
  ASSERT_NE(array[2], nullptr);
  EXPECT_EQ(*array[0], 7);
  EXPECT_EQ(*array[2], 8);
  EXPECT_EQ(array[500], nullptr);
}

TEST(Array, RefusesANegativeDimension) {
  Array<long> array;
  EXPECT_FAILS_WITH(array.resize(-1, false), "array: dimension < 0");
}

TEST(Array, RefusesANegativeDimensionBeforeAnythingElse) {
  Array<long> array = counted(3);
  EXPECT_FAILS_WITH(array.resize(-4, true), "array: dimension < 0");
}

TEST(Array, HasAValidSlotZeroWhileItIsEmpty) {
  Array<long> array;
  array.resize(3, false);
  array.clear();
  array.element(0) = 42;
  EXPECT_EQ(std::as_const(array).element(0), 42);
}

TEST(Array, StartsSlotZeroOfANumberAtZero) {
  Array<long double> array(3);
  EXPECT_EQ(array.element(0), 0);
}

TEST(Array, RefusesSlotZeroWithoutStorage) {
  Array<long> array;
  EXPECT_FAILS_WITH(array.element(0), "Array: index out of range");
}

TEST(Array, ChecksTheIndexAgainstTheDimensionAndNotTheCapacity) {
  Array<long> array;
  array.resize(5, true);
  array.element(5) = 1;
  EXPECT_FAILS_WITH(array.element(6), "Array: index out of range");
}

TEST(Array, RefusesANegativeIndex) {
  Array<long> array(5);
  EXPECT_FAILS_WITH(array.element(-1), "Array: index out of range");
}

TEST(Array, ChecksTheIndexOfAConstArrayToo) {
  const Array<long> array(5);
  EXPECT_FAILS_WITH(array.element(6), "Array: index out of range");
}

TEST(Array, SwapsTwoElements) {
  Array<long> array = counted(3);
  array.swap(1, 3);
  EXPECT_EQ(array[1], 103);
  EXPECT_EQ(array[2], 102);
  EXPECT_EQ(array[3], 101);
}

TEST(Array, SwapsWithSlotZero) {
  Array<long> array = counted(3);
  array.swap(0, 3);
  EXPECT_EQ(array[0], 103);
  EXPECT_EQ(array[3], 100);
}

TEST(Array, LeavesAnElementSwappedWithItself) {
  Array<std::string> array(1);
  array[1] = "a text that is too long to stand in the string object itself";
  array.swap(1, 1);
  EXPECT_EQ(array[1], "a text that is too long to stand in the string object itself");
}

TEST(Array, RefusesToSwapAFirstIndexBeyondTheDimension) {
  Array<long> array(3);
  EXPECT_FAILS_WITH(array.swap(4, 1), "Array: swap index out of range");
}

TEST(Array, RefusesToSwapASecondIndexBeyondTheDimension) {
  Array<long> array(3);
  EXPECT_FAILS_WITH(array.swap(1, 4), "Array: swap index out of range");
}

TEST(Array, RefusesToSwapNegativeIndices) {
  Array<long> array(3);
  EXPECT_FAILS_WITH(array.swap(-1, 1), "Array: swap index out of range");
  EXPECT_FAILS_WITH(array.swap(1, -1), "Array: swap index out of range");
}

TEST(Array, RefusesAnEqualPairOfIndicesOutOfRangeToo) {
  Array<long> array(3);
  EXPECT_FAILS_WITH(array.swap(4, 4), "Array: swap index out of range");
}

TEST(Array, KeepsItsStorageWhenItIsCleared) {
  Array<long> array = counted(3);
  const long* const storage = array.data();
  array.clear();
  EXPECT_EQ(array.dimension(), 0);
  EXPECT_EQ(array.data(), storage);
  EXPECT_EQ(array.capacity(), 3);
  EXPECT_FALSE(array.isSet());
}

TEST(Array, IsFreshAgainAfterDestroy) {
  Array<long> array = counted(3);
  array.destroy();
  EXPECT_EQ(array.dimension(), 0);
  EXPECT_EQ(array.capacity(), 0);
  EXPECT_EQ(array.data(), nullptr);
}

TEST(Array, GrowsAgainAfterDestroy) {
  Array<long> array = counted(3);
  array.destroy();
  array.resize(2, false);
  array[2] = 7;
  EXPECT_EQ(array[2], 7);
  EXPECT_EQ(array.capacity(), 2);
}

TEST(Array, IsSetWithOneElement) {
  EXPECT_TRUE(Array<long>(1).isSet());
}

TEST(Array, CopiesDeeplyWithSlotZeroAndWithoutSpareCapacity) {
  Array<long> array;
  array.resize(3, true);
  std::iota(array.data(), array.data() + 4, 100);
  Array<long> copy(array);
  EXPECT_EQ(copy.dimension(), 3);
  EXPECT_EQ(copy.capacity(), 3);
  EXPECT_EQ(copy[0], 100);
  EXPECT_EQ(copy[3], 103);
  copy[1] = 0;
  EXPECT_EQ(array[1], 101);
}

TEST(Array, ReusesItsStorageWhenAShorterOneIsAssigned) {
  const Array<long> source = counted(4);
  Array<long> target = counted(5);
  const long* const storage = target.data();
  target = source;
  EXPECT_EQ(target.data(), storage);
  EXPECT_EQ(target.dimension(), 4);
  EXPECT_EQ(target.capacity(), 5);
}

TEST(Array, GrowsWhenALongerOneIsAssigned) {
  Array<long> target = counted(2);
  const Array<long> source = counted(4);
  target = source;
  EXPECT_EQ(target.dimension(), 4);
  EXPECT_EQ(target[4], 104);
}

TEST(Array, IsEmptyAfterAnEmptyOneIsAssigned) {
  Array<long> target = counted(2);
  const Array<long> fresh;
  target = fresh;
  EXPECT_EQ(target.dimension(), 0);
}

TEST(Array, KeepsSlotZeroOfAnEmptySourceThatHasStorage) {
  Array<long> source(1);
  source.clear();
  source[0] = 9;
  const Array<long> copy(source);
  EXPECT_EQ(copy.element(0), 9);
}

TEST(Array, SurvivesAssignmentToItself) {
  Array<std::string> array(2);
  array[2] = "kept";
  Array<std::string>& same = array;
  array = same;
  EXPECT_EQ(array.dimension(), 2);
  EXPECT_EQ(array[2], "kept");
}

TEST(Array, LeavesAFreshOneBehindWhenItIsMoved) {
  Array<long> array = counted(3);
  const long* const storage = array.data();
  const Array<long> target(std::move(array));
  EXPECT_EQ(target.data(), storage);
  EXPECT_EQ(array.dimension(), 0);
  EXPECT_EQ(array.data(), nullptr);
}

TEST(Array, ExchangesContentsWithoutTouchingElements) {
  Array<long> a = counted(3);
  Array<long> b;
  const long* const storage = a.data();
  a.exchange(b);
  EXPECT_EQ(b.data(), storage);
  EXPECT_EQ(b.dimension(), 3);
  EXPECT_EQ(b.capacity(), 3);
  EXPECT_EQ(a.data(), nullptr);
  EXPECT_EQ(a.dimension(), 0);
}

TEST(Array, RunsOverItsContentWithoutSlotZero) {
  const Array<long> array = counted(3);
  EXPECT_EQ(std::accumulate(array.begin(), array.end(), 0L), 101 + 102 + 103);
}

TEST(Array, HasNothingToRunOverWhileItIsEmpty) {
  Array<long> fresh;
  EXPECT_EQ(fresh.begin(), fresh.end());
  Array<long> cleared = counted(3);
  cleared.clear();
  EXPECT_EQ(cleared.begin(), cleared.end());
}

TEST(Array, AppendedElementsStandBehindTheOthers) {
  Array<std::string> array;
  for (int i = 1; i <= 5; ++i) append(array, std::to_string(i));
  ASSERT_EQ(array.dimension(), 5);
  for (Index i = 1; i <= 5; ++i) EXPECT_EQ(array[i], std::to_string(i));
}

TEST(Array, AppendingMovesTheElement) {
  Array<std::unique_ptr<int>> array;
  auto number = std::make_unique<int>(7);
  const int* const address = number.get();
  append(array, std::move(number));
  append(array, std::make_unique<int>(8));
  EXPECT_EQ(array[1].get(), address);
}

TEST(Array, AppendingGrowsTheStorageAFewTimesOnly) {
  Array<long> array;
  int growths = 0;
  for (long i = 1; i <= 1000; ++i) {
    const Index before = array.capacity();
    append(array, i);
    if (array.capacity() > before) ++growths;
  }
  EXPECT_EQ(array.dimension(), 1000);
  EXPECT_LE(growths, 10);
}

TEST(Array, AppendingFillsTheRoomThatThereIs) {
  Array<long> array = counted(5);
  array.resize(2, false);
  const long* const storage = array.data();
  append(array, 17L);
  EXPECT_EQ(array.data(), storage);
  EXPECT_EQ(array[2], 102);
  EXPECT_EQ(array[3], 17);
}

}  // namespace
}  // namespace starsift

#include "core/HashedIndices.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

bool never(Index /*index*/) {
  return false;
}

bool always(Index /*index*/) {
  return true;
}

TEST(HashedIndices, EmptyTableFindsNothing) {
  const HashedIndices table;
  EXPECT_EQ(table.find(0, always), 0);
}

TEST(HashedIndices, EnteredIndexIsFoundByItsHash) {
  HashedIndices table;
  EXPECT_EQ(table.findOrEnter(77, 1, always), 1);
  EXPECT_EQ(table.find(77, always), 1);
  EXPECT_EQ(table.find(78, always), 0);
}

TEST(HashedIndices, IndexThatFitsIsNotEnteredAgain) {
  HashedIndices table;
  table.findOrEnter(77, 1, always);
  EXPECT_EQ(table.findOrEnter(77, 2, always), 1);
  EXPECT_EQ(table.find(77, [](Index index) { return index == 2; }), 0);
}

TEST(HashedIndices, ConditionChoosesAmongEqualHashes) {
  HashedIndices table;
  for (Index i = 1; i <= 100; ++i) EXPECT_EQ(table.findOrEnter(5, i, never), i);
  for (Index i = 1; i <= 100; ++i)
    EXPECT_EQ(table.find(5, [i](Index index) { return index == i; }), i);
  EXPECT_EQ(table.find(5, never), 0);
}

// In a table of 16 slots all of these begin at the same one.
TEST(HashedIndices, HashesThatShareASlotAreToldApart) {
  HashedIndices table;
  for (Index i = 1; i <= 7; ++i) table.findOrEnter(static_cast<std::size_t>(i) << 40U, i, always);
  for (Index i = 1; i <= 7; ++i)
    EXPECT_EQ(table.find(static_cast<std::size_t>(i) << 40U, always), i);
  EXPECT_EQ(table.find(std::size_t{8} << 40U, always), 0);
}

// The last slot is followed by the first.
TEST(HashedIndices, SlotsGoOnAtTheFirst) {
  HashedIndices table;
  for (Index i = 1; i <= 3; ++i) table.findOrEnter(15, i, never);
  for (Index i = 1; i <= 3; ++i)
    EXPECT_EQ(table.find(15, [i](Index index) { return index == i; }), i);
}

TEST(HashedIndices, GrowthKeepsEveryIndex) {
  HashedIndices table;
  const auto hash = [](Index i) { return static_cast<std::size_t>(i) * 2654435761U; };
  for (Index i = 1; i <= 1000; ++i) {
    ASSERT_EQ(table.findOrEnter(hash(i), i, always), i);
    ASSERT_EQ(table.find(hash(1), always), 1) << i;
  }
  for (Index i = 1; i <= 1000; ++i) ASSERT_EQ(table.find(hash(i), always), i);
  EXPECT_EQ(table.find(hash(1001), always), 0);
}

TEST(HashedIndices, ReservingKeepsWhatIsThere) {
  HashedIndices table;
  table.findOrEnter(3, 1, always);
  table.findOrEnter(19, 2, always);
  table.reserve(500);
  EXPECT_EQ(table.find(3, always), 1);
  EXPECT_EQ(table.find(19, always), 2);
  table.reserve(1);
  EXPECT_EQ(table.find(19, always), 2);
}

TEST(HashedIndices, ClearedTableBeginsAnew) {
  HashedIndices table;
  for (Index i = 1; i <= 40; ++i) table.findOrEnter(static_cast<std::size_t>(i), i, always);
  table.clear();
  for (Index i = 1; i <= 40; ++i) EXPECT_EQ(table.find(static_cast<std::size_t>(i), always), 0);
  EXPECT_EQ(table.findOrEnter(7, 1, always), 1);
  EXPECT_EQ(table.find(7, always), 1);
}

}  // namespace
}  // namespace starsift

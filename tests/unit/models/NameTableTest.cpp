#include "models/record/NameTable.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

TEST(NameTable, GivesIndicesInTheOrderOfNames) {
  NameTable table;
  EXPECT_EQ(table.add("b").index, 0U);
  EXPECT_EQ(table.add("a").index, 1U);
  EXPECT_EQ(table[0], "b");
  EXPECT_EQ(table[1], "a");
  EXPECT_EQ(table.size(), 2U);
}

TEST(NameTable, KnowsANameThatIsThere) {
  NameTable table;
  table.add("a");
  table.add("b");
  const NameTable::Added again = table.add("a");
  EXPECT_FALSE(again.isNew);
  EXPECT_EQ(again.index, 0U);
  EXPECT_EQ(table.size(), 2U);
}

TEST(NameTable, FindsEachOfManyNames) {
  NameTable table;
  constexpr unsigned count = 5000;
  for (unsigned i = 0; i < count; ++i) table.add("x" + std::to_string(i));
  for (unsigned i = 0; i < count; ++i) ASSERT_EQ(table.find("x" + std::to_string(i)), i);
  EXPECT_EQ(table.find("x5000"), std::nullopt);
}

TEST(NameTable, IsEmptyAtFirst) {
  EXPECT_EQ(NameTable().find("a"), std::nullopt);
  EXPECT_EQ(NameTable().size(), 0U);
}

TEST(NameTable, HoldsTheEmptyName) {
  NameTable table;
  table.add("a");
  EXPECT_EQ(table.find(""), std::nullopt);
  EXPECT_TRUE(table.add("").isNew);
  EXPECT_EQ(table[1], "");
  EXPECT_EQ(table.find(""), 1U);
}

}  // namespace
}  // namespace starsift

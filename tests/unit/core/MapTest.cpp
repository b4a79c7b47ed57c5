#include "core/Map.h"

#include <gtest/gtest.h>

#include <string>

namespace starsift {
namespace {

TEST(Map, AppendsOneEntryForANewKey) {
  Map<int, std::string> map;
  map[7] = "seven";
  map[3] = "three";
  ASSERT_EQ(map.dimension(), 2);
  EXPECT_EQ(map.element(1).left, 7);
  EXPECT_EQ(map.element(2).left, 3);
}

TEST(Map, LooksAKeyUpWithoutAppendingIt) {
  Map<int, std::string> map;
  map[7] = "seven";
  EXPECT_EQ(map[7], "seven");
  EXPECT_EQ(map.dimension(), 1);
}

TEST(Map, FindsNothingForAnUnknownKeyAndStaysAsItIs) {
  Map<int, std::string> map;
  EXPECT_EQ(map.find(1), nullptr);
  map[7] = "seven";
  EXPECT_EQ(map.find(1), nullptr);
  EXPECT_EQ(map.dimension(), 1);
  ASSERT_NE(map.find(7), nullptr);
  EXPECT_EQ(*map.find(7), "seven");
}

TEST(Map, CopiesItsEntries) {
  Map<int, std::string> map;
  map[7] = "seven";
  Map<int, std::string> copy(map);
  copy[7] = "eight";
  EXPECT_EQ(map[7], "seven");
}

TEST(Hash, GivesANewNameTheEmptyValue) {
  Hash<long> hash;
  EXPECT_EQ(hash["a"], 0);
  hash["a"] = 5;
  EXPECT_EQ(hash["a"], 5);
  EXPECT_EQ(hash.dimension(), 1);
}

TEST(Hash, ForgetsTheValuesOfEntriesThatWereRemoved) {
  Hash<long> hash;
  hash["a"] = 5;
  hash["b"] = 6;
  hash.resize(1, false);
  EXPECT_EQ(hash["c"], 0);
  EXPECT_EQ(hash["a"], 5);
}

TEST(Hash, TellsNamesApartByCase) {
  Hash<long> hash;
  hash["a"] = 5;
  EXPECT_EQ(hash.find("A"), nullptr);
}

}  // namespace
}  // namespace starsift

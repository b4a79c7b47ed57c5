#include "lattice/state/VecStatus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

namespace starsift {
namespace {

Array<StatusWord> wordsOf(std::initializer_list<StatusWord> words) {
  Array<StatusWord> result;
  result.resize(static_cast<Index>(words.size()), false);
  std::copy(words.begin(), words.end(), result.begin());
  return result;
}

TEST(VecStatus, CarriesAsksForAllOfTheBits) {
  EXPECT_TRUE(carries(ST_MU | ST_Q | ST_CACHED, ST_CACHED_ROW));
  EXPECT_FALSE(carries(ST_MU | ST_Q, ST_CACHED_ROW));
}

TEST(VecStatus, TheFirstRowWithoutOneOfTheBits) {
  const Array<StatusWord> words = wordsOf({ST_MU | ST_Q, ST_MU, ST_Q});
  EXPECT_EQ(firstWithout(words, ST_MU | ST_Q, 1, 3), 2);
  EXPECT_EQ(firstWithout(words, ST_MU, 1, 3), 3);
  EXPECT_EQ(firstWithout(words, ST_MU, 1, 2), 3);
  EXPECT_EQ(firstWithout(words, ST_MU, 3, 2), 3);
}

TEST(VecStatus, RowsThatAreNotThereLackAllBits) {
  Array<StatusWord> words = wordsOf({ST_MU, ST_MU, ST_MU, ST_MU});
  words.resize(2, false);
  EXPECT_EQ(firstWithout(words, ST_MU, 1, 4), 3);
  EXPECT_EQ(firstWithout(words, ST_MU, 4, 4), 4);
}

}  // namespace
}  // namespace starsift

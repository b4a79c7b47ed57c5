#include "models/record/NumberList.h"

#include <gtest/gtest.h>

#include "models/text/ModelNumber.h"

namespace starsift {
namespace {

/// One number of each kind: integers and decimals at the ends of what is short, and beyond.
std::vector<QQ> numbersOfAllKinds() {
  std::vector<QQ> numbers{QQ::infinity(), -QQ::infinity()};
  for (const char* text : {"0",
                           "1",
                           "-1",
                           "0.5",
                           "-0.000001",
                           "144115188075855871",
                           "144115188075855872",
                           "-144115188075855871",
                           "-144115188075855872",
                           "999999999999999999",
                           "4611686018427387904",
                           "0.00000000000000001",
                           "0.12345678901234567",
                           "0.99999999999999999",
                           "0.000000000000000001",
                           "1e-19",
                           "-12345678901234567.8",
                           "1/3",
                           "-22/7",
                           "1e30",
                           "1/4294967296"})
    numbers.push_back(*parseNumber(text));
  return numbers;
}

TEST(NumberList, HoldsNumbersExactly) {
  NumberList list;
  const std::vector<QQ> numbers = numbersOfAllKinds();
  for (const QQ& number : numbers) list.append(number);
  ASSERT_EQ(list.size(), numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) EXPECT_EQ(list[i], numbers[i]);
}

TEST(NumberList, ReplacesAndCopiesNumbersOfAllKinds) {
  const std::vector<QQ> numbers = numbersOfAllKinds();
  for (const QQ& before : numbers) {
    for (const QQ& after : numbers) {
      NumberList list;
      list.resize(2);
      EXPECT_EQ(list[1], QQ::zero());
      list.set(0, before);
      list.copy(0, 1);
      list.set(0, after);
      EXPECT_EQ(list[0], after);
      EXPECT_EQ(list[1], before);
    }
  }
}

}  // namespace
}  // namespace starsift

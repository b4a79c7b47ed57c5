#include "files/PlainText.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

TEST(PlainText, IsAnIntegerOrAFraction) {
  EXPECT_EQ(plainText(QQ(-3)), "-3");
  EXPECT_EQ(plainText(QQ(-7, 2)), "-7/2");
  EXPECT_EQ(plainText(-QQ::infinity()), "-inf");
}

}  // namespace
}  // namespace starsift

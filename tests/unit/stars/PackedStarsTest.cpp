#include "stars/PackedStars.h"

#include <gtest/gtest.h>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

Star<QQ> star(std::vector<int> x) {
  Star<QQ> result;
  result.resize(static_cast<Index>(x.size()), false);
  for (std::size_t i = 0; i < x.size(); ++i) result[static_cast<Index>(i) + 1] = QQ(x[i]);
  return result;
}

PointForm formOf(const Star<QQ>& star) {
  PackedStars stars;
  stars.append(star);
  return stars[0].form;
}

TEST(PackedStars, TakeTheShortestFormThatHoldsAllComponents) {
  EXPECT_EQ(formOf(star({0, 1})), PointForm::bits);
  EXPECT_EQ(formOf(star({0, -1})), PointForm::bytes);
  EXPECT_EQ(formOf(star({127, -128})), PointForm::bytes);
  EXPECT_EQ(formOf(star({128})), PointForm::shorts);
  EXPECT_EQ(formOf(star({-32769})), PointForm::words);
  EXPECT_EQ(formOf(Star<QQ>{QQ(1L << 31U)}), PointForm::text);
  EXPECT_EQ(formOf(Star<QQ>{QQ(1, 2)}), PointForm::text);
}

/// The star of a number: its binary digits and zeros, 97 components.
Star<QQ> starOfDigits(std::size_t number) {
  Star<QQ> result;
  result.resize(97, false);
  for (Index i = 1; i <= result.dimension(); ++i, number /= 2)
    result[i] = QQ(static_cast<int>(number % 2));
  result.targetNorm = QQ(-17);
  result.targetValues = Vector<QQ>{QQ(17)};
  result.time = 40'000;
  result.paramsText = "--verb=1,--sol=0,--lll=1,--deep=1";
  result.versionText = "2.4.2";
  return result;
}

TEST(PackedStars, TakeFewBytesEach) {
  constexpr std::size_t count = 200'000;
  PackedStars stars;
  for (std::size_t i = 0; i < count; ++i) stars.append(starOfDigits(i));
  EXPECT_LT(stars.storageSize(), 60 * count);
}

TEST(PackedStars, FreeWhatWasDropped) {
  PackedStars stars;
  for (std::size_t i = 0; i < 20'000; ++i) stars.append(starOfDigits(i % 1000));
  const std::size_t before = stars.storageSize();
  stars.removeDuplicates(true);
  EXPECT_EQ(stars.size(), 1000U);
  EXPECT_LT(stars.storageSize(), before / 2);
  EXPECT_TRUE(identical(stars.star(999).x(), starOfDigits(999).x()));
}

TEST(PackedStars, FitLongDoubleAgainWithoutTheStarThatDidNot) {
  PackedStars stars;
  stars.append(star({1}));
  EXPECT_TRUE(stars.fitLongDouble());
  Star<QQ> same = star({1});
  same.targetNorm = QQ(1, 3);
  stars.append(same);
  EXPECT_FALSE(stars.fitLongDouble());
  stars.removeDuplicates(true);
  EXPECT_EQ(stars.size(), 1U);
  EXPECT_TRUE(stars.fitLongDouble());
}

TEST(PackedStars, OfDifferentLengthsHaveNoDuplicates) {
  PackedStars stars;
  stars.append(star({1}));
  stars.append(star({1, 0}));
  EXPECT_FAILS_WITH(stars.removeDuplicates(true), "Vector: dimension mismatch9");
}

TEST(PackedStars, OfDifferentLengthsAreSortedByTheirTexts) {
  PackedStars stars;
  stars.append(star({1, 0}));
  stars.append(star({1}));
  stars.sort<QQ>();
  EXPECT_EQ(stars[0].dimension, 2);
}

TEST(PackedStars, HugeTimesAndNormsAreOrderedBehindThoseOfTheKeys) {
  PackedStars stars;
  for (const std::int64_t time : {-1L, 1L << 40U, (1L << 40U) - 1, 7L}) {
    Star<QQ> added = star({1});
    added.time = time;
    stars.append(added);
  }
  stars.append(star({1}));
  stars.sort<long double>();
  EXPECT_EQ(stars[0].time, 7);
  EXPECT_EQ(stars[1].time, (1L << 40U) - 1);
  EXPECT_EQ(stars[2].time, 1L << 40U);
}

}  // namespace
}  // namespace starsift

// Packed stars against those that they stand for.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "files/Report.h"
#include "files/SolWriter.h"
#include "numbers/Conversion.h"
#include "stars/PackedStars.h"
#include "stars/StarOrder.h"
#include "text/TextStreams.h"

namespace starsift {
namespace {

const std::vector<std::string> bitTexts{"0", "1"};
const std::vector<std::string> integerTexts{
    "0",     "1",      "-1",    "9",      "10",     "127",         "128",       "-129",
    "32768", "-32769", "65536", "999999", "123456", "-2147483648", "2147483647"};
const std::vector<std::string> anyTexts{"0",
                                        "1",
                                        "-7",
                                        "2147483648",
                                        "123456789012345678",
                                        "1/3",
                                        "0.5",
                                        "2:1/8",
                                        "-99999999999999999",
                                        "1234567890123456789012345678901",
                                        "inf",
                                        "-inf",
                                        "1000000000000000"};

QQ arbitraryOf(const std::vector<std::string>& texts) {
  return QQ::parse(*rc::gen::elementOf(texts));
}

/// Stars of one dimension whose keys often agree; `components` and `numbers` are what they hold.
Array<Star<QQ>> arbitraryStars(const std::vector<std::string>& components,
                               const std::vector<std::string>& numbers) {
  const auto dimension = *rc::gen::inRange<Index>(0, 20);
  const auto valueCount = *rc::gen::inRange<Index>(0, 3);
  Array<Star<QQ>> stars(*rc::gen::inRange<Index>(0, 30));
  for (Star<QQ>& star : stars) {
    star.resize(dimension, false);
    for (QQ& component : star) component = arbitraryOf(components);
    star.targetValues.resize(valueCount, false);
    for (QQ& value : star.targetValues) value = arbitraryOf(numbers);
    star.targetNorm = arbitraryOf(numbers);
    star.slackNorm = arbitraryOf(numbers);
    star.time = *rc::gen::element<std::int64_t>(-1, 3, 20, 5'000'000'000);
    star.versionText = *rc::gen::element<std::string>("", "2.4", "2.4.0", "2.10");
    star.paramsText = *rc::gen::element<std::string>("", "a", "b", "ab");
    star.fresh = *rc::gen::arbitrary<bool>();
  }
  // Some are there twice.
  const Index single = stars.dimension();
  for (Index i = 1; i <= single; i += 3) append(stars, Star<QQ>(stars[i]));
  return stars;
}

Array<Star<QQ>> arbitraryStars() {
  const std::vector<std::string> few{"0", "1", "-1", "17"};
  switch (*rc::gen::inRange(0, 4)) {
    case 0:
      return arbitraryStars(bitTexts, few);
    case 1:
      return arbitraryStars(bitTexts, {"0"});
    case 2:
      return arbitraryStars(integerTexts, few);
    default:
      return arbitraryStars(anyTexts, anyTexts);
  }
}

PackedStars packed(const Array<Star<QQ>>& stars) {
  PackedStars result;
  for (const Star<QQ>& star : stars) result.append(star);
  return result;
}

std::string textOf(const Star<QQ>& star) {
  return starText(star) + (star.fresh ? " fresh\n" : "\n");
}

std::string textOf(const PackedStars& stars) {
  std::string text;
  for (std::size_t i = 0; i < stars.size(); ++i) text += textOf(stars.star(i));
  return text;
}

template <class T>
std::string textOf(const Array<Star<T>>& stars) {
  std::string text;
  for (const Star<T>& star : stars) {
    Star<QQ> exact;
    exact.convertFrom(star, false);
    text += textOf(exact);
  }
  return text;
}

bool fits(const Array<Star<QQ>>& stars) {
  try {
    for (const Star<QQ>& star : stars) Star<long double>().convertFrom(star, false);
    return true;
  } catch (const PrecisionException&) {
    return false;
  }
}

template <class T>
void siftsLikeStars(const Array<Star<QQ>>& stars) {
  Array<Star<T>> plain(stars.dimension());
  for (Index i = 1; i <= stars.dimension(); ++i) plain[i].convertFrom(stars[i], false);
  PackedStars few = packed(stars);
  few.sort<T>();
  sortStars(plain);
  const bool compareParams = *rc::gen::arbitrary<bool>();
  few.removeDuplicates(compareParams);
  removeDuplicates(plain, compareParams);
  RC_ASSERT(textOf(few) == textOf(plain));
  RC_ASSERT(few.fitLongDouble() == fits(stars) ||
            few.size() < static_cast<std::size_t>(stars.dimension()));
}

RC_GTEST_PROP(PackedStars, AreTheStarsThatWerePacked, ()) {
  const Array<Star<QQ>> stars = arbitraryStars();
  const PackedStars few = packed(stars);
  RC_ASSERT(textOf(few) == textOf(stars));
  RC_ASSERT(few.fitLongDouble() == fits(stars));
}

RC_GTEST_PROP(PackedStars, AreSortedAndSiftedAsRationals, ()) {
  siftsLikeStars<QQ>(arbitraryStars());
}

RC_GTEST_PROP(PackedStars, AreSortedAndSiftedAsLongDouble, ()) {
  const Array<Star<QQ>> stars = arbitraryStars();
  RC_PRE(fits(stars));
  siftsLikeStars<long double>(stars);
}

RC_GTEST_PROP(PackedStars, GrowBetweenSorts, ()) {
  Array<Star<QQ>> stars = arbitraryStars(bitTexts, bitTexts);
  PackedStars few;
  for (Index i = 1; i <= stars.dimension(); ++i) {
    few.append(stars[i]);
    if (*rc::gen::inRange(0, 4) != 0) continue;
    few.sort<QQ>();
    few.removeDuplicates(true);
  }
  few.sort<QQ>();
  few.removeDuplicates(true);
  sortStars(stars);
  removeDuplicates(stars, true);
  RC_ASSERT(few.size() == static_cast<std::size_t>(stars.dimension()));
  for (Index i = 1; i <= stars.dimension(); ++i)
    RC_ASSERT(identical(few.star(static_cast<std::size_t>(i - 1)).x(), stars[i].x()));
}

template <class T>
void isWrittenLikeStars(const Array<Star<QQ>>& stars) {
  const PackedStars few = packed(stars);
  Array<Star<T>> plain(stars.dimension());
  std::string lines;
  std::string plainLines;
  for (Index i = 1; i <= stars.dimension(); ++i) {
    plain[i].convertFrom(stars[i], false);
    RC_PRE(hasExactText(plain[i].x()));
    plainLines += starText(plain[i]) + '\n';
    appendLine<T>(lines, few, static_cast<std::size_t>(i - 1));
  }
  RC_ASSERT(lines == plainLines);
  Vector<T> goals(stars.isSet() ? stars[1].targetValues.dimension() : 0);
  TextWriter report;
  TextWriter plainReport;
  writeSolutions(report, few, goals);
  writeSolutions(plainReport, plain, goals);
  RC_ASSERT(std::move(report).str() == std::move(plainReport).str());
}

RC_GTEST_PROP(PackedStars, AreWrittenAsRationals, ()) {
  isWrittenLikeStars<QQ>(arbitraryStars());
}

RC_GTEST_PROP(PackedStars, AreWrittenAsLongDouble, ()) {
  const Array<Star<QQ>> stars = arbitraryStars();
  RC_PRE(fits(stars));
  isWrittenLikeStars<long double>(stars);
}

}  // namespace
}  // namespace starsift

// What containers write, they read back, from text in memory and from a stream,
// with any white space and comments between.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/SerializableArray.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/SingleCharacterBuffer.h"
#include "support/fixtures/TextOf.h"
#include "support/generators/ContainerGenerators.h"

namespace starsift {
namespace {

using test::arbitraryGap;
using test::textOf;

/// Digits that tell any two long doubles apart.
constexpr int allDigits = std::numeric_limits<long double>::max_digits10;

/// Numerator and denominator; (s, 0) is the infinity with the sign of s.
using Fraction = std::pair<std::int64_t, std::int64_t>;

rc::Gen<std::vector<Fraction>> arbitraryFractions() {
  return rc::gen::container<std::vector<Fraction>>(rc::gen::pair(
      rc::gen::arbitrary<std::int64_t>(),
      rc::gen::oneOf(rc::gen::just<std::int64_t>(1), rc::gen::inRange<std::int64_t>(0, 1000),
                     rc::gen::inRange<std::int64_t>(1, std::numeric_limits<std::int64_t>::max()))));
}

Vector<QQ> exactVector(const std::vector<Fraction>& fractions) {
  Vector<QQ> vector(static_cast<Index>(fractions.size()));
  Index i = 0;
  for (const auto& [numerator, denominator] : fractions) {
    QQ& component = vector[++i];
    if (denominator == 0)
      component.setInf(numerator >= 0);
    else
      component = QQ(static_cast<long>(numerator), static_cast<long>(denominator));
  }
  return vector;
}

/// mantissa * 2^exponent, or an infinity for exponents beyond the range.
Vector<long double> roundedVector(const std::vector<std::pair<std::int64_t, int>>& parts) {
  Vector<long double> vector(static_cast<Index>(parts.size()));
  Index i = 0;
  for (const auto& [mantissa, exponent] : parts)
    vector[++i] = std::ldexp(static_cast<long double>(mantissa), exponent);
  return vector;
}

rc::Gen<std::vector<std::pair<std::int64_t, int>>> arbitraryParts() {
  return rc::gen::container<std::vector<std::pair<std::int64_t, int>>>(
      rc::gen::pair(rc::gen::arbitrary<std::int64_t>(),
                    rc::gen::oneOf(rc::gen::just(0), rc::gen::inRange(-70, 70),
                                   rc::gen::inRange(-16000, 17000))));
}

template <class Object>
std::string fullText(const Object& object) {
  std::ostringstream stream;
  stream << std::setprecision(allDigits) << object;
  return stream.str();
}

/// The vector in the text, from memory, from a stream and from a pipe.
template <class T>
Vector<T> readEveryWay(const std::string& text) {
  Vector<T> vector;
  TextCursor source(text);
  readVector(source, vector);
  RC_ASSERT(source.atEnd());
  RC_ASSERT(identical(test::readFrom<Vector<T>>(text), vector));
  test::SingleCharacterBuffer buffer(text);
  std::istream pipe(&buffer);
  Vector<T> fromPipe;
  pipe >> fromPipe;
  RC_ASSERT(identical(fromPipe, vector));
  return vector;
}

/// The text with arbitrary gaps for its blanks.
std::string spread(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == ' ' || c == '\n')
      result += *arbitraryGap();
    else
      result += c;
  }
  return result;
}

RC_GTEST_PROP(VectorText, ReadsBackOverQQ, ()) {
  const Vector<QQ> vector = exactVector(*arbitraryFractions());
  RC_ASSERT(identical(readEveryWay<QQ>(textOf(vector)), vector));
}

RC_GTEST_PROP(VectorText, ReadsBackOverLongDouble, ()) {
  const Vector<long double> vector = roundedVector(*arbitraryParts());
  const std::string text = fullText(vector);
  RC_ASSERT(identical(readEveryWay<long double>(text), vector));
  std::string appended;
  appendText(appended, vector, allDigits);
  RC_ASSERT(appended == text);
}

RC_GTEST_PROP(VectorText, ReadsOverAnyGapOverQQ, ()) {
  const Vector<QQ> vector = exactVector(*rc::gen::resize(20, arbitraryFractions()));
  RC_ASSERT(identical(readEveryWay<QQ>(spread(textOf(vector))), vector));
}

RC_GTEST_PROP(VectorText, ReadsOverAnyGapOverLongDouble, ()) {
  const Vector<long double> vector = roundedVector(*rc::gen::resize(20, arbitraryParts()));
  RC_ASSERT(identical(readEveryWay<long double>(spread(fullText(vector))), vector));
}

template <class T>
void checkMatrixText() {
  const auto columns = *rc::gen::inRange<Index>(1, 6);
  const auto rows = *test::arbitraryRows(*rc::gen::inRange<Index>(0, 6), columns, 100000);
  const auto matrix = test::matrixFrom<T>(rows, rows.empty() ? 0 : columns);
  for (const std::string& text : {textOf(matrix), spread(textOf(matrix))}) {
    Matrix<T> fromText;
    TextCursor source(text);
    readMatrix(source, fromText);
    const auto fromStream = test::readFrom<Matrix<T>>(text);
    RC_ASSERT(source.atEnd());
    RC_ASSERT(fromText.columnCount() == matrix.columnCount());
    RC_ASSERT(textOf(fromText) == textOf(matrix));
    RC_ASSERT(textOf(fromStream) == textOf(matrix));
  }
}

RC_GTEST_PROP(MatrixText, ReadsBackOverLongDouble, ()) {
  checkMatrixText<long double>();
}
RC_GTEST_PROP(MatrixText, ReadsBackOverQQ, ()) {
  checkMatrixText<QQ>();
}

RC_GTEST_PROP(ListText, ReadsBackItemsWithoutTheFirstSeparator, ()) {
  const auto separators = *rc::gen::element<std::string>(",", ";,", ",\n", "|;:", ",\t \n");
  // A closing bracket and a backslash have no escape, and the first separator none
  // either; an empty item at the end can't be told from none.
  const auto character = rc::gen::suchThat(
      rc::gen::oneOf(rc::gen::arbitrary<char>(), rc::gen::element(' ', '\n', ',', ';', '[', '\0')),
      [&](char c) { return c != ']' && c != '\\' && c != separators.front(); });
  const auto items = *rc::gen::container<std::vector<std::string>>(
      rc::gen::nonEmpty(rc::gen::container<std::string>(character)));
  SerializableArray<std::string> array(separators, false, false);
  array.resize(static_cast<Index>(items.size()), false);
  std::copy(items.begin(), items.end(), array.begin());
  std::istringstream stream(textOf(array) + "rest");
  SerializableArray<std::string> back(separators, false, false);
  stream >> back;
  RC_ASSERT(std::vector<std::string>(back.begin(), back.end()) == items);
  std::string rest;
  std::getline(stream, rest);
  RC_ASSERT(rest == "rest");
}

RC_GTEST_PROP(ListText, ReadsBackNumbers, ()) {
  const auto items = *rc::gen::arbitrary<std::vector<long>>();
  SerializableArray<long> array(*rc::gen::element<std::string>(",", "\n", ":,"), false, false);
  array.resize(static_cast<Index>(items.size()), false);
  std::copy(items.begin(), items.end(), array.begin());
  std::istringstream stream(textOf(array));
  SerializableArray<long> back(array.separators(), false, false);
  stream >> back;
  RC_ASSERT(std::vector<long>(back.begin(), back.end()) == items);
}

}  // namespace
}  // namespace starsift

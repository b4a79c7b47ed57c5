// Vectors and matrices against the same written out on plain lists.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/generators/ContainerGenerators.h"

namespace starsift {
namespace {

using test::arbitraryRows;
using test::matrixFrom;
using test::Rows;
using test::vectorFrom;

constexpr std::int64_t largestEntry = 1000;

struct Factors {
  Rows a, b;
  Index inner = 0;
  Index columns = 0;
};

Factors arbitraryFactors() {
  const auto rows = *rc::gen::inRange<Index>(0, 6);
  const auto inner = *rc::gen::inRange<Index>(0, 6);
  const auto columns = *rc::gen::inRange<Index>(0, 6);
  return {*arbitraryRows(rows, inner, largestEntry), *arbitraryRows(inner, columns, largestEntry),
          inner, columns};
}

Rows naiveProduct(const Rows& a, const Rows& b, Index columns) {
  Rows product(a.size(), std::vector<std::int64_t>(static_cast<std::size_t>(columns)));
  for (std::size_t i = 0; i < a.size(); ++i)
    for (std::size_t j = 0; j < product[i].size(); ++j)
      for (std::size_t k = 0; k < b.size(); ++k) product[i][j] += a[i][k] * b[k][j];
  return product;
}

template <class T>
bool sameMatrix(const Matrix<T>& a, const Matrix<T>& b) {
  if (a.rowCount() != b.rowCount() || a.columnCount() != b.columnCount()) return false;
  for (Index i = 1; i <= a.rowCount(); ++i)
    if (!identical(a[i], b[i])) return false;
  return true;
}

TEST(SameMatrix, TellsADifferenceInShapeAndEntry) {
  const Matrix<QQ> a(2, 3);
  Matrix<QQ> b(2, 3);
  EXPECT_TRUE(sameMatrix(a, b));
  b[2][3] = QQ(1);
  EXPECT_FALSE(sameMatrix(a, b));
  EXPECT_FALSE(sameMatrix(a, Matrix<QQ>(2, 4)));
}

template <class T>
void checkProducts() {
  const Factors factors = arbitraryFactors();
  const auto a = matrixFrom<T>(factors.a, factors.inner);
  auto b = matrixFrom<T>(factors.b, factors.columns);
  const auto product =
      matrixFrom<T>(naiveProduct(factors.a, factors.b, factors.columns), factors.columns);
  RC_ASSERT(sameMatrix(a * b, product));
  auto inPlace = a;
  RC_ASSERT(sameMatrix(inPlace *= b, product));
  for (Index i = 1; i <= a.rowCount(); ++i) RC_ASSERT(identical(a[i] * b, product[i]));
  for (Index j = 1; j <= b.columnCount(); ++j) {
    Vector<T> column(b.rowCount());
    for (Index k = 1; k <= b.rowCount(); ++k) column[k] = b[k][j];
    const Vector<T> image = a * column;
    for (Index i = 1; i <= a.rowCount(); ++i) {
      RC_ASSERT(image[i] == product[i][j]);
      RC_ASSERT(a[i] * column == product[i][j]);
    }
  }
}

RC_GTEST_PROP(Products, AreTheNaiveSumsOverLongDouble, ()) {
  checkProducts<long double>();
}
RC_GTEST_PROP(Products, AreTheNaiveSumsOverQQ, ()) {
  checkProducts<QQ>();
}

RC_GTEST_PROP(Vectors, AddAndSubtractBackToWhereTheyWere, ()) {
  const auto rows = *arbitraryRows(2, *rc::gen::inRange<Index>(0, 20), largestEntry);
  const auto a = vectorFrom<QQ>(rows[0]);
  const auto b = vectorFrom<QQ>(rows[1]);
  RC_ASSERT(identical(a + b - b, a));
  auto c = a;
  c += b;
  RC_ASSERT(identical(c, a + b));
  RC_ASSERT(a * b == b * a);
}

RC_GTEST_PROP(Vectors, ConvertBetweenTheWorldsAndBack, ()) {
  const auto components = *rc::gen::container<std::vector<std::int64_t>>(
      rc::gen::inRange<std::int64_t>(-999999999999999999, 1000000000000000000));
  const auto exact = vectorFrom<QQ>(components);
  Vector<long double> rounded;
  rounded.convertFrom(exact, true);
  Vector<QQ> back;
  back.convertFrom(rounded, true);
  RC_ASSERT(identical(back, exact));
}

RC_GTEST_PROP(Vectors, EditTheirComponentsAsAListDoes, ()) {
  std::vector<std::int64_t> model;
  Vector<long> vector;
  const auto edits = *rc::gen::container<std::vector<std::pair<bool, std::uint8_t>>>(
      rc::gen::arbitrary<std::pair<bool, std::uint8_t>>());
  long value = 0;
  for (const auto& [insert, position] : edits) {
    const auto size = static_cast<Index>(model.size());
    if (insert || model.empty()) {
      const Index index = 1 + position % (size + 1);
      vector.insertComponent(index, ++value);
      model.insert(model.begin() + (index - 1), value);
    } else {
      const Index index = 1 + position % size;
      vector.removeComponent(index);
      model.erase(model.begin() + (index - 1));
    }
    RC_ASSERT(std::vector<std::int64_t>(vector.begin(), vector.end()) == model);
  }
}

RC_GTEST_PROP(Arrays, GrowAndShrinkByTheirRules, ()) {
  // What was stored where; growth beyond the capacity keeps the elements in use.
  std::map<Index, long> known;
  Array<long> array;
  long value = 0;
  for (const auto& [reserve, dimension] :
       *rc::gen::container<std::vector<std::pair<bool, std::uint8_t>>>(
           rc::gen::arbitrary<std::pair<bool, std::uint8_t>>())) {
    const Index before = array.capacity();
    if (dimension > before) known.erase(known.upper_bound(array.dimension()), known.end());
    array.resize(dimension, reserve);
    RC_ASSERT(array.dimension() == dimension);
    RC_ASSERT(array.capacity() ==
              (dimension <= before ? before : dimension + (reserve ? growthMargin : 0)));
    for (const auto& [index, stored] : known)
      if (index <= dimension) RC_ASSERT(array.element(index) == stored);
    if (dimension > 0) known[dimension] = array[dimension] = ++value;
  }
}

}  // namespace
}  // namespace starsift

#include "algorithms/reduction/GramSchmidt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "support/oracles/OrthogonalCertificate.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::exactRows;
using test::tenth;
using M = Matrix<long double>;
using V = Vector<long double>;

constexpr long double infinity = std::numeric_limits<long double>::infinity();

struct Data {
  M mu;
  V cLen;
  V bSq;

  explicit Data(const M& rows)
      : mu(rows.rowCount(), rows.rowCount()), cLen(rows.rowCount()), bSq(rows.rowCount()) {
    for (Vector<long double>& row : mu) std::fill(row.begin(), row.end(), 9);
    RowProducts<long double> products;
    products.resize(rows.rowCount());
    for (Index k = 1; k <= rows.rowCount(); ++k)
      classicGramSchmidt(rows, k, products, mu, cLen, bSq);
  }
};

std::string refusal(const M& rows) {
  try {
    const Data data(rows);
  } catch (const DecimalPrecisionException& exception) {
    return exception.message();
  }
  return "orthogonalised";
}

TEST(GramSchmidt, OrthogonalisesRows) {
  const M rows{{3, 4, 0}, {4, 3, 1}, {1, 1, 7}};
  const Data data(rows);
  EXPECT_TRUE(test::isOrthogonalisation(exactRows(rows), data.mu, data.cLen, tenth(17)));
  EXPECT_TRUE(identical(data.bSq, V{25, 26, 51}));
}

TEST(GramSchmidt, LeavesNothingOfARowThatIsASum) {
  const M rows{{1, 2, 3}, {4, 5, 6}, {5, 7, 9}};
  const Data data(rows);
  EXPECT_LE(std::abs(data.cLen[3]), eps);
}

TEST(GramSchmidt, ThrowsForANanCoefficient) {
  EXPECT_EQ(refusal({{0, 0}, {1, 2}}), "mu-classic has nan entry");  // 0 / 0
  EXPECT_EQ(refusal({{1, 1}, {infinity, -infinity}}), "mu-classic has nan entry");
}

TEST(GramSchmidt, ThrowsForAnInfiniteLength) {
  EXPECT_EQ(refusal({{infinity}}), "cLen-classic has infinite entry");
  EXPECT_EQ(refusal({{1e2500L}}), "cLen-classic has infinite entry");
  // Here it would be infinity less infinity.
  EXPECT_EQ(refusal({{1, 0}, {1e2500L, 0}}), "cLen-classic has infinite entry");
}

}  // namespace
}  // namespace starsift

#include "support/generators/CosetGenerators.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace starsift::test {

namespace {

using IntegerRow = std::vector<ZZ>;

int integer(int least, int most) {
  return *rc::gen::inRange(least, most + 1);
}

std::vector<IntegerRow> rowsOf(std::size_t d, std::size_t n, int bound) {
  std::vector<IntegerRow> rows(d, IntegerRow(n));
  for (std::size_t k = 0; k < d; ++k) {
    for (std::size_t j = 0; j < n; ++j) rows[k][j] = ZZ(integer(-bound, bound));
    // A triangle with a diagonal makes the rows independent.
    for (std::size_t j = 0; j < k; ++j) rows[k][j] = ZZ();
    rows[k][k] = ZZ(integer(1, bound));
  }
  return rows;
}

/// Adds multiples of rows to each other, so that the basis isn't reduced.
void skew(std::vector<IntegerRow>& rows, int operations, int bound) {
  if (rows.size() < 2) return;
  const int last = static_cast<int>(rows.size()) - 1;
  for (int i = 0; i < operations; ++i) {
    const auto to = static_cast<std::size_t>(integer(0, last));
    const auto from = static_cast<std::size_t>(integer(0, last));
    if (to == from) continue;
    const ZZ factor(integer(-bound, bound));
    for (std::size_t j = 0; j < rows[to].size(); ++j) rows[to][j] += factor * rows[from][j];
  }
}

BoxCoset drawCoset(int greatestLength) {
  const auto n = static_cast<std::size_t>(integer(0, greatestLength));
  const auto d = static_cast<std::size_t>(integer(0, static_cast<int>(n)));
  BoxCoset coset{rowsOf(d, n, 4), {}, {}, {}};
  // Now and then Gram-Schmidt vectors of lengths that differ by millions.
  if (integer(0, 3) == 0)
    for (IntegerRow& row : coset.basis) {
      const ZZ factor = pow(ZZ::ten(), ZZ(integer(0, 7))) + ZZ(integer(0, 9));
      for (ZZ& entry : row) entry *= factor;
    }
  skew(coset.basis, integer(0, 4), 3);
  const int least = integer(0, 19) == 0 ? -1 : 0;
  for (std::size_t j = 0; j < n; ++j) {
    coset.point.emplace_back(integer(-6, 6));
    coset.lower.emplace_back(integer(-5, 3));
    coset.upper.push_back(coset.lower[j] + ZZ(integer(least, 5)));
  }
  // A random column order, so that the triangle doesn't favour the first coordinates.
  for (std::size_t j = 1; j < n; ++j) {
    const auto other = static_cast<std::size_t>(integer(0, static_cast<int>(j)));
    for (IntegerRow& row : coset.basis) std::swap(row[j], row[other]);
  }
  return coset;
}

/// Basis of the x with a x = 0 for x in the lattice of the rows, by Euclid's algorithm on the
/// products a row; the last row, whose product is the greatest common divisor, is dropped.
void restrictTo(std::vector<IntegerRow>& rows, const IntegerRow& equation) {
  const auto product = [&](const IntegerRow& row) {
    ZZ sum;
    for (std::size_t j = 0; j < row.size(); ++j) sum += equation[j] * row[j];
    return sum;
  };
  for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
    while (true) {
      const ZZ here = product(rows[i]);
      const ZZ next = product(rows[i + 1]);
      if (here.isZero()) break;
      if (!next.isZero() && abs(next) <= abs(here)) {
        ZZ quotient;
        ZZ remainder;
        divMod(here, next, quotient, remainder);
        for (std::size_t j = 0; j < equation.size(); ++j) rows[i][j] -= quotient * rows[i + 1][j];
      } else {
        rows[i].swap(rows[i + 1]);
      }
    }
  }
  if (!rows.empty() && !product(rows.back()).isZero()) rows.pop_back();
}

}  // namespace

rc::Gen<BoxCoset> arbitraryCoset() {
  return rc::gen::exec([] { return drawCoset(5); });
}

rc::Gen<BoxCoset> arbitraryCornerCoset() {
  return rc::gen::exec([] {
    const auto n = static_cast<std::size_t>(integer(8, 11));
    BoxCoset coset;
    for (std::size_t k = 0; k < n; ++k) {
      coset.basis.emplace_back(n);
      coset.basis[k][k] = ZZ(1);
      coset.point.emplace_back(integer(0, 1));
      coset.lower.emplace_back(0);
      coset.upper.emplace_back(1);
    }
    for (int i = integer(1, 3); i > 0; --i) {
      IntegerRow equation;
      for (std::size_t j = 0; j < n; ++j) equation.emplace_back(integer(0, 15));
      restrictTo(coset.basis, equation);
    }
    for (const IntegerRow& row : coset.basis) {
      const ZZ factor(integer(-2, 2));
      for (std::size_t j = 0; j < n; ++j) coset.point[j] += factor * row[j];
    }
    return coset;
  });
}

BoxCoset stretched(const BoxCoset& coset, const std::vector<ZZ>& factors) {
  BoxCoset result(coset);
  for (std::size_t j = 0; j < factors.size(); ++j) {
    for (IntegerRow& row : result.basis) row[j] *= factors[j];
    for (IntegerRow* row : {&result.point, &result.lower, &result.upper}) (*row)[j] *= factors[j];
    ZZ margin(factors[j]);
    mpz_fdiv_q_ui(margin.get(), margin.get(), 3);
    if (coset.lower[j] > coset.upper[j]) continue;
    result.lower[j] -= margin;
    result.upper[j] += margin;
  }
  return result;
}

rc::Gen<StretchedCoset> arbitraryStretchedCoset(int digits) {
  return rc::gen::exec([digits] {
    StretchedCoset result{drawCoset(4), {}};
    for (std::size_t j = 0; j < result.small.point.size(); ++j) {
      std::string text = "1";
      for (int i = integer(0, digits - 1); i > 0; --i) text += std::to_string(integer(0, 9));
      result.factors.emplace_back(text, 10);
    }
    return result;
  });
}

}  // namespace starsift::test

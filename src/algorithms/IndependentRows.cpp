#include "algorithms/IndependentRows.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

#include "algorithms/IndependentRowsDetail.h"
#include "algorithms/PadicLift.h"

namespace starsift {

namespace {

/// Nearly 30 bits a digit, and millions of primes follow below PrimeField::limit: no
/// input of bearable size has minors that all of them divide.
constexpr std::uint32_t firstPrime = 1'000'000'007;

/// Columns that are checked together: those of one cache line in a row.
constexpr std::size_t columnsAtOnce = 8;

/// coefficients * kept rows == row in the columns from `first` to before `last`.
bool combinesIn(const PivotBlock& block, const Coefficients& coefficients, const IntegerRow& row,
                std::size_t first, std::size_t last) {
  const ZZ minusDenominator = -coefficients.denominator;
  std::vector<ZZ> sums(last - first);
  for (std::size_t j = first; j < last; ++j) row.addProduct(sums[j - first], minusDenominator, j);
  for (std::size_t i = 0; i < block.order(); ++i) {
    const ZZ& factor = coefficients.numerators[i];
    if (factor.isZero()) continue;
    for (std::size_t j = first; j < last; ++j) block.row(i).addProduct(sums[j - first], factor, j);
  }
  return std::all_of(sums.begin(), sums.end(), [](const ZZ& sum) { return sum.isZero(); });
}

bool combines(const PivotBlock& block, const Coefficients& coefficients, const IntegerRow& row,
              std::size_t columns) {
  for (std::size_t first = 0; first < columns; first += columnsAtOnce)
    if (!combinesIn(block, coefficients, row, first, std::min(first + columnsAtOnce, columns)))
      return false;
  return true;
}

/// Proofs that rows are combinations of the kept ones.
class Combinations {
 public:
  Combinations(const PivotBlock& block, std::size_t columns) : block_(block), columns_(columns) {}

  /// The row depends on the first `above` of the kept rows. Coefficients are unique, so
  /// it doesn't where another kept row takes part.
  bool dependsOn(std::size_t above, const IntegerRow& row) {
    const std::optional<Coefficients> coefficients = find(row);
    if (!coefficients) return false;
    const auto below = coefficients->numerators.begin() + static_cast<std::ptrdiff_t>(above);
    return std::all_of(below, coefficients->numerators.end(),
                       [](const ZZ& numerator) { return numerator.isZero(); });
  }

 private:
  /// The coefficients of the row over all kept ones, if it is a combination of them.
  std::optional<Coefficients> find(const IntegerRow& row) {
    PadicLift lift(block_, row);
    const std::size_t most = block_.sufficientDigits(row);
    // A guess that fails costs far less than an eighth of the digits.
    for (std::size_t digits = 1;; digits = std::min(digits + digits / 8 + 1, most)) {
      lift.liftTo(digits);
      std::optional<Coefficients> coefficients = proven(lift.over(denominator_), row);
      if (coefficients) return coefficients;
      if (const std::optional<ZZ> denominator = lift.denominator())
        coefficients = proven(lift.over(*denominator), row);
      if (coefficients) {
        denominator_ = lcm(denominator_, coefficients->denominator);
        return coefficients;
      }
      if (digits == most) return std::nullopt;
    }
  }

  std::optional<Coefficients> proven(std::optional<Coefficients> guess,
                                     const IntegerRow& row) const {
    if (guess && !combines(block_, *guess, row, columns_)) guess.reset();
    return guess;
  }

  const PivotBlock& block_;
  std::size_t columns_;
  /// Of all coefficients so far. It divides the determinant of the block, and long
  /// denominators are mostly that, so the next row may well need no other one.
  ZZ denominator_ = ZZ::one();
};

struct Before {
  bool operator()(const IntegerRow& a, const IntegerRow& b) const { return a < b; }
};

/// Rows that are neither zero nor a multiple of a row above, with their indices.
struct DistinctRows {
  std::vector<IntegerRow> rows;
  std::vector<Index> indices;
};

template <class T>
DistinctRows distinctRows(const Matrix<T>& matrix) {
  DistinctRows result;
  // Growing would leave the references behind.
  result.rows.reserve(static_cast<std::size_t>(matrix.rowCount()));
  std::set<std::reference_wrapper<const IntegerRow>, Before> known;
  for (Index i = 1; i <= matrix.rowCount(); ++i) {
    const IntegerRow& row = result.rows.emplace_back(matrix[i]);
    if (!row.isZero() && known.insert(row).second)
      result.indices.push_back(i);
    else
      result.rows.pop_back();
  }
  return result;
}

}  // namespace

namespace detail {

std::optional<std::vector<std::size_t>> provenSplit(std::span<const IntegerRow> rows,
                                                    std::size_t columns, const PrimeField& field) {
  ModularSplit split = splitRows(rows, columns, field);
  if (split.doubtful.empty()) return std::move(split.kept);
  const PivotBlock block(rows, split, field);
  Combinations combinations(block, columns);
  std::size_t above = 0;
  for (const std::size_t i : split.doubtful) {
    while (above < split.kept.size() && split.kept[above] < i) ++above;
    if (!combinations.dependsOn(above, rows[i])) return std::nullopt;
  }
  return std::move(split.kept);
}

std::vector<std::size_t> independentIntegerRows(std::span<const IntegerRow> rows,
                                                std::size_t columns, std::uint32_t prime) {
  while (true) {
    std::optional<std::vector<std::size_t>> kept = provenSplit(rows, columns, PrimeField(prime));
    if (kept) return std::move(*kept);
    prime = nextPrime(prime);
  }
}

}  // namespace detail

template <class T>
std::vector<Index> independentRows(const Matrix<T>& rows) {
  const DistinctRows distinct = distinctRows(rows);
  std::vector<Index> result;
  for (const std::size_t i : detail::independentIntegerRows(
           distinct.rows, static_cast<std::size_t>(rows.columnCount()), firstPrime))
    result.push_back(distinct.indices[i]);
  return result;
}

template std::vector<Index> independentRows(const Matrix<long double>&);
template std::vector<Index> independentRows(const Matrix<QQ>&);

}  // namespace starsift

#include "certificates/HermiteForm.h"

#include <optional>
#include <utility>

#include "algorithms/exact/Combinations.h"
#include "algorithms/exact/Determinant.h"
#include "certificates/ModularHermite.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

/// A column that isn't zero, as factor * line.
///
/// Positive factors of columns commute with row operations and keep the order of entries
/// in a column. So the form of the lines, with the signs of the factors, gives that of
/// the columns.
struct Column {
  Index number;
  QQ factor;
};

struct Columns {
  std::vector<IntegerRow> lines;
  std::vector<Column> columns;

  explicit Columns(const Matrix<QQ>& rows) {
    for (Index j = 1; j <= rows.columnCount(); ++j) {
      Vector<QQ> column(rows.rowCount());
      for (Index i = 1; i <= rows.rowCount(); ++i) column[i] = rows[i][j];
      IntegerRow line(column);
      if (line.isZero()) continue;
      columns.push_back({j, factorOf(column, line)});
      lines.push_back(std::move(line));
    }
  }

  /// The entry of the line in a row, with the sign of the column.
  ZZ entry(std::size_t column, std::size_t row) const {
    const ZZ entry = lines[column].entry(row);
    return columns[column].factor.sign() ? entry : -entry;
  }
};

/// Linear relations among the lines.
struct Relations {
  /// Lines that are independent of the lines before them.
  std::vector<std::size_t> pivots;
  /// Coefficients of each other line over the pivots before it; empty at a pivot.
  std::vector<std::optional<Coefficients>> coefficients;
  /// A multiple of the exponent of the group of all integer vectors modulo the lattice, both
  /// restricted to the pivots.
  ZZ modulus;
};

ZZ determinantOf(const PivotBlock& block) {
  IntegerMatrix entries;
  for (std::size_t i = 0; i < block.order(); ++i)
    entries.push_back(block.pivotEntries(block.row(i)));
  return determinant(entries);
}

/// Empty if the prime divides a relevant minor.
std::optional<Relations> relationsBy(const std::vector<IntegerRow>& lines, std::size_t rows,
                                     const PrimeField& field) {
  ModularSplit split = splitRows(lines, rows, field);
  const PivotBlock block(lines, split, field);
  Combinations combinations(block, rows);
  Relations result;
  result.coefficients.resize(lines.size());
  std::size_t above = 0;
  for (std::size_t j = 0; j < lines.size(); ++j) {
    if (above < split.kept.size() && split.kept[above] == j) {
      ++above;
      continue;
    }
    result.coefficients[j] = combinations.findAbove(above, lines[j]);
    if (!result.coefficients[j]) return std::nullopt;
  }
  result.pivots = std::move(split.kept);
  result.modulus = abs(determinantOf(block));
  return result;
}

Relations relationsOf(const std::vector<IntegerRow>& lines, std::size_t rows) {
  for (std::uint32_t prime = firstPrime;; prime = nextPrime(prime))
    if (std::optional<Relations> relations = relationsBy(lines, rows, PrimeField(prime)))
      return std::move(*relations);
}

/// The rows restricted to the pivots.
IntegerMatrix pivotEntries(const Columns& columns, const std::vector<std::size_t>& pivots,
                           std::size_t rows) {
  IntegerMatrix result(rows);
  for (std::size_t i = 0; i < rows; ++i)
    for (const std::size_t pivot : pivots) result[i].push_back(columns.entry(pivot, i));
  return result;
}

/// The entry in a column that isn't a pivot, for a row with known entries in the pivots.
QQ combined(const std::vector<ZZ>& row, const Coefficients& coefficients, const Columns& columns,
            const std::vector<std::size_t>& pivots) {
  ZZ sum;
  for (std::size_t k = 0; k < pivots.size(); ++k) {
    const bool isPositive = columns.columns[pivots[k]].factor.sign();
    (isPositive ? mpz_addmul : mpz_submul)(sum.get(), row[k].get(),
                                           coefficients.numerators[k].get());
  }
  return {sum, coefficients.denominator};
}

/// Fills the row of the form that has these entries in the pivots of the lines.
void fillRow(Vector<QQ>& target, const std::vector<ZZ>& entries, const Columns& columns,
             const Relations& relations) {
  for (std::size_t k = 0; k < entries.size(); ++k) {
    const Column& column = columns.columns[relations.pivots[k]];
    target[column.number] = abs(column.factor) * QQ(entries[k]);
  }
  for (std::size_t j = 0; j < columns.columns.size(); ++j) {
    const Column& column = columns.columns[j];
    if (const auto& coefficients = relations.coefficients[j])
      target[column.number] =
          column.factor * combined(entries, *coefficients, columns, relations.pivots);
  }
}

}  // namespace

template <class T>
Matrix<QQ> hermiteForm(const Matrix<T>& rows) {
  const Columns columns(finiteRationals(rows));
  const auto rowCount = static_cast<std::size_t>(rows.rowCount());
  const Relations relations = relationsOf(columns.lines, rowCount);
  const std::vector<std::size_t>& pivots = relations.pivots;
  const IntegerMatrix form =
      hermiteModulo(pivotEntries(columns, pivots, rowCount), pivots.size(), relations.modulus);
  Matrix<QQ> result(static_cast<Index>(pivots.size()), rows.columnCount());
  for (std::size_t i = 0; i < form.size(); ++i)
    fillRow(result[static_cast<Index>(i) + 1], form[i], columns, relations);
  return result;
}

template Matrix<QQ> hermiteForm(const Matrix<long double>&);
template Matrix<QQ> hermiteForm(const Matrix<QQ>&);

}  // namespace starsift

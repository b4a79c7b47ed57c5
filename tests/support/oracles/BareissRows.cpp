#include "support/oracles/BareissRows.h"

#include <algorithm>
#include <utility>

namespace starsift::test {

namespace {

struct KeptRow {
  std::vector<mpz_class> entries;
  std::size_t pivot;
};

/// The row after the step of each kept row, whose pivots are 0 then. All entries are
/// minors of the matrix, so each division by the pivot before comes out even.
std::vector<mpz_class> reduced(std::vector<mpz_class> row, const std::vector<KeptRow>& kept) {
  mpz_class previous = 1;
  for (const KeptRow& above : kept) {
    const mpz_class pivot = above.entries[above.pivot];
    const mpz_class factor = row[above.pivot];
    for (std::size_t j = 0; j < row.size(); ++j) {
      row[j] = row[j] * pivot - factor * above.entries[j];
      mpz_divexact(row[j].get_mpz_t(), row[j].get_mpz_t(), previous.get_mpz_t());
    }
    previous = pivot;
  }
  return row;
}

}  // namespace

std::vector<std::size_t> independentRowsByBareiss(const IntegerRows& rows) {
  std::vector<std::size_t> result;
  std::vector<KeptRow> kept;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::vector<mpz_class> row = reduced(rows[i], kept);
    const auto pivot =
        std::find_if(row.begin(), row.end(), [](const mpz_class& entry) { return entry != 0; });
    if (pivot == row.end()) continue;
    result.push_back(i);
    const auto column = static_cast<std::size_t>(pivot - row.begin());
    kept.push_back({std::move(row), column});
  }
  return result;
}

IntegerRows scaledRows(const std::vector<std::vector<mpq_class>>& rows) {
  IntegerRows result;
  for (const auto& row : rows) {
    mpz_class scale = 1;
    for (const mpq_class& entry : row) scale = lcm(scale, entry.get_den());
    auto& scaled = result.emplace_back();
    for (const mpq_class& entry : row)
      scaled.emplace_back(entry.get_num() * (scale / entry.get_den()));
  }
  return result;
}

}  // namespace starsift::test

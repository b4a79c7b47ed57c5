// Block reduction beside brute force, and the lattice that it keeps.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

#include "algorithms/reduction/BlockEnumeration.h"
#include "certificates/LatticeEquality.h"
#include "lattice/reduce/BlockReduction.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/ReducedBasis.h"
#include "support/generators/LatticeGenerators.h"

namespace starsift {
namespace {

class Patient : public RowVisitor {
 public:
  void onRow(Index /*k*/) override {}
  bool mayStep(const PassStatus& /*status*/) override { return true; }
  void onStepped(const PassStatus& /*status*/) override {}
};

double arbitraryReal(int least, int most) {
  return *rc::gen::inRange(least, most) / 1000.0;
}

ProjectedBlock arbitraryBlock(std::size_t d) {
  ProjectedBlock block;
  for (std::size_t i = 0; i < d; ++i) {
    block.lengths.push_back(arbitraryReal(300, 3000));
    block.mu.emplace_back();
    for (std::size_t k = 0; k < i; ++k) block.mu[i].push_back(arbitraryReal(-500, 501));
  }
  return block;
}

double squaredLength(const ProjectedBlock& block, const std::vector<double>& x) {
  double sum = 0;
  for (std::size_t k = 0; k < x.size(); ++k) {
    double part = x[k];
    for (std::size_t i = k + 1; i < x.size(); ++i) part += x[i] * block.mu[i][k];
    sum += part * part * block.lengths[k];
  }
  return sum;
}

/// The least squared length of combinations with coefficients up to `most`, other than 0.
double leastLength(const ProjectedBlock& block, std::vector<double>& x, std::size_t k, int most) {
  if (k == x.size()) {
    const double length = squaredLength(block, x);
    return length > 1e-9 ? length : INFINITY;
  }
  double least = INFINITY;
  for (int c = -most; c <= most; ++c) {
    x[k] = c;
    least = std::min(least, leastLength(block, x, k + 1, most));
  }
  x[k] = 0;
  return least;
}

// Lengths are within a factor of 10, so that coefficients of a shortest vector are at most 3 for
// the last row, and small for the others too.
RC_GTEST_PROP(Blocks, EnumerationFindsWhatBruteForceFinds, ()) {
  const auto d = *rc::gen::inRange<std::size_t>(1, 5);
  const ProjectedBlock block = arbitraryBlock(d);
  std::vector<double> x(d);
  const double expected = leastLength(block, x, 0, 5);
  const BlockResult result =
      enumerateBlock(block, {block.lengths[0] + 1e-9, BlockPruning::complete, {}});
  RC_ASSERT(result.shortest.has_value());
  RC_ASSERT(std::fabs(result.shortest->squaredLength - expected) < 1e-9);
  RC_ASSERT(std::fabs(squaredLength(block, result.shortest->coefficients) - expected) < 1e-9);
}

/// Squared length of a shortest combination of rows with coefficients up to `most`.
template <class T>
T leastLength(const Matrix<T>& rows, int most) {
  T least = rows[1] * rows[1];
  std::vector<int> x(static_cast<std::size_t>(rows.rowCount()), -most);
  while (true) {
    Vector<T> sum(rows.columnCount());
    for (Index k = 1; k <= rows.rowCount(); ++k)
      for (Index j = 1; j <= rows.columnCount(); ++j)
        sum[j] += T(x[static_cast<std::size_t>(k - 1)]) * rows[k][j];
    const T length = sum * sum;
    if (!(length == T()) && length < least) least = length;
    std::size_t k = 0;
    while (k < x.size() && x[k] == most) x[k++] = -most;
    if (k == x.size()) return least;
    ++x[k];
  }
}

template <class T>
void checkBlocks(const Matrix<QQ>& given, Index size, const BlockSettings& settings) {
  Matrix<T> rows;
  rows.convertFrom(given, true);
  Basis<T, long double> basis;
  basis.reset(&rows, T(1));
  GramSchmidtData<long double> data;
  data.resize(basis.n);
  Patient visitor;
  LllReduction<T, long double> lll(basis, data, visitor, {});
  BlockReduction<T, long double> blocks(basis, data, visitor, lll, settings);
  RC_ASSERT(blocks.run(basis.n, size) == BlockEnd::reduced);
  RC_ASSERT(test::isReduced(basis.B()));
  RC_ASSERT(sameLattice(basis.B(), rows));
  if (size < basis.n || settings.pruning != BlockPruning::complete) return;
  // One block: its first row is a shortest vector, up to the factor delta.
  const T length = basis.B()[1] * basis.B()[1];
  RC_ASSERT(!(leastLength(basis.B(), 2) * T(1000) < length * T(989)));
}

/// Independent rows, by a unit matrix in front of them.
Matrix<QQ> arbitraryIndependentRows(Index n) {
  const long largest = *rc::gen::element(3L, 100L, 1000000L);
  Matrix<QQ> rows(n, n + 2);
  for (Index i = 1; i <= n; ++i) {
    rows[i][i] = QQ(1);
    for (Index j = n + 1; j <= n + 2; ++j) rows[i][j] = QQ(*rc::gen::inRange(-largest, largest));
  }
  return rows;
}

RC_GTEST_PROP(Blocks, ReductionKeepsTheLatticeAndReducesIt, ()) {
  const Matrix<QQ> rows = arbitraryIndependentRows(*rc::gen::inRange<Index>(1, 6));
  BlockSettings settings;
  settings.pruning = *rc::gen::element(BlockPruning::complete, BlockPruning::linear,
                                       BlockPruning::strong, BlockPruning::extreme);
  settings.deep = *rc::gen::arbitrary<bool>();
  const auto size = *rc::gen::inRange<Index>(2, 7);
  checkBlocks<long double>(rows, size, settings);
  checkBlocks<QQ>(rows, size, settings);
}

}  // namespace
}  // namespace starsift

// The choice of independent rows, by size and by the share of dependent ones. There are
// twice as many columns as rows; entries have ten digits.
#include "algorithms/exact/IndependentRows.h"

#include "Benchmarks.h"
#include "numbers/VectorQQ.h"
#include "support/Register.h"
#include "support/Samples.h"
#include "support/oracles/BareissRows.h"

namespace starsift::bench {

namespace {

using benchmark::State;

struct Shape {
  Index rows;
  /// Combinations of all others, by factors below ten.
  Index dependent;
  /// They stand among the others, so that these depend on them: coefficients are
  /// quotients of long minors then.
  bool shuffled = false;
};

/// The peer takes more than a second here, and its numbers grow with each row.
constexpr Index mostRowsOfPeer = 125;

std::string nameOf(const Shape& shape) {
  return std::to_string(shape.dependent) + "_of_" + std::to_string(shape.rows) +
         (shape.shuffled ? "_shuffled" : "_rows");
}

QQ tenDigits(Random& random) {
  const QQ magnitude = QQ::parse(digits(random, 10));
  return below(random, 2) == 0 ? magnitude : -magnitude;
}

/// Adds each of the first `count` rows to row i, times a random factor.
void addCombination(Matrix<QQ>& matrix, Index i, Index count, Random& random) {
  for (Index k = 1; k <= count; ++k) {
    const QQ factor(static_cast<long>(below(random, 19)) - 9);
    for (Index j = 1; j <= matrix.columnCount(); ++j)
      addProduct(matrix[i][j], factor, matrix[k][j]);
  }
}

Matrix<QQ> matrixOf(const Shape& shape) {
  Random random(1);
  Matrix<QQ> matrix(shape.rows, 2 * shape.rows);
  const Index rank = shape.rows - shape.dependent;
  for (Index i = 1; i <= rank; ++i)
    for (QQ& entry : matrix[i]) entry = tenDigits(random);
  for (Index i = rank + 1; i <= shape.rows; ++i) addCombination(matrix, i, rank, random);
  if (!shape.shuffled) return matrix;
  for (Index i = shape.rows; i > 1; --i)
    matrix.swapRows(i, 1 + static_cast<Index>(below(random, static_cast<std::uint64_t>(i))));
  return matrix;
}

template <class T>
void choose(State& state, const Shape& shape) {
  Matrix<T> matrix;
  matrix.convertFrom(matrixOf(shape), false);
  for (auto _ : state) benchmark::DoNotOptimize(independentRows(matrix));
  count(state, static_cast<std::size_t>(shape.rows));
}

void choosePeer(State& state, const Shape& shape) {
  test::IntegerRows rows;
  for (const Vector<QQ>& row : matrixOf(shape)) {
    auto& copy = rows.emplace_back();
    for (const QQ& entry : row) copy.emplace_back(entry.numerator().get());
  }
  for (auto _ : state) benchmark::DoNotOptimize(test::independentRowsByBareiss(rows));
  count(state, rows.size());
}

void addShape(const Shape& shape) {
  const std::string input = nameOf(shape);
  const auto addSubject = [&](const std::string& subject, auto body) {
    add("independent_rows", input, subject, [=](State& state) {
      body(state, shape);
    })->Unit(benchmark::kMillisecond);
  };
  addSubject("QQ", choose<QQ>);
  addSubject("long_double", choose<dbl_t>);
  if (shape.rows <= mostRowsOfPeer) addSubject("peer_bareiss", choosePeer);
}

}  // namespace

void registerIndependentRows() {
  for (const Index rows : {mostRowsOfPeer, 2 * mostRowsOfPeer, 4 * mostRowsOfPeer}) {
    for (const Index dependent : {Index{0}, Index{1}, rows / 10, rows / 2})
      addShape({rows, dependent});
    addShape({rows, rows / 2, true});
  }
}

}  // namespace starsift::bench

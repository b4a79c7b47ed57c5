// What the exact judgement of bases costs: LLL conditions, unimodular matrices, Hermite
// forms, equality of lattices, kernels and coordinates, by rows and by digits of the
// entries. The answers are yes, which takes all of the work.
#include "Benchmarks.h"
#include "algorithms/exact/BasisSolver.h"
#include "algorithms/exact/CoordinateSolver.h"
#include "algorithms/exact/Unimodular.h"
#include "certificates/HermiteForm.h"
#include "certificates/Kernel.h"
#include "certificates/LatticeEquality.h"
#include "certificates/LllViolations.h"
#include "numbers/VectorQQ.h"
#include "support/Register.h"
#include "support/Samples.h"
#include "support/oracles/SlowDeterminant.h"
#include "support/oracles/SlowHermite.h"

namespace starsift::bench {

namespace {

using benchmark::State;

QQ signedNumber(Random& random, std::size_t count) {
  const QQ magnitude = QQ::parse(digits(random, count));
  return below(random, 2) == 0 ? magnitude : -magnitude;
}

Matrix<QQ> randomRows(Index rows, Index columns, std::size_t count) {
  Random random(1);
  Matrix<QQ> matrix(rows, columns);
  for (Vector<QQ>& row : matrix)
    for (QQ& entry : row) entry = signedNumber(random, count);
  return matrix;
}

/// Adds rows to other rows or subtracts them, so that entries stay short.
void mixRows(Matrix<QQ>& matrix, Index steps) {
  Random random(2);
  const auto rows = static_cast<std::uint64_t>(matrix.rowCount());
  for (Index step = 0; step < steps; ++step) {
    const auto i = static_cast<Index>(below(random, rows)) + 1;
    const auto k = static_cast<Index>(below(random, rows)) + 1;
    const QQ factor(static_cast<long>(below(random, 3)) - 1);
    if (i == k) continue;
    for (Index j = 1; j <= matrix.columnCount(); ++j)
      addProduct(matrix[i][j], factor, matrix[k][j]);
  }
}

/// Reduced: a rising diagonal and numbers below half of it.
Matrix<QQ> reducedBasis(Index rows, std::size_t count) {
  Matrix<QQ> basis = randomRows(rows, rows, count);
  const QQ unit(pow(ZZ(10), ZZ(static_cast<long>(count))));
  for (Index i = 1; i <= rows; ++i) {
    for (Index j = i + 1; j <= rows; ++j) basis[i][j] = QQ();
    basis[i][i] = QQ(2 + i) * unit;
  }
  return basis;
}

/// A product of triangular matrices with ones in their diagonals.
Matrix<QQ> unimodularMatrix(Index order, std::size_t count) {
  Matrix<QQ> lower = randomRows(order, order, count);
  Matrix<QQ> upper = lower;
  for (Index i = 1; i <= order; ++i) {
    for (Index j = i; j <= order; ++j) {
      lower[i][j] = QQ(i == j ? 1 : 0);
      upper[j][i] = lower[i][j];
    }
  }
  return upper * lower;
}

/// One equation with coefficients of `count` digits, the first one 1, and its solutions,
/// some of them added to others.
struct KernelCase {
  Matrix<QQ> equation;
  Matrix<QQ> rows;
};

KernelCase kernelCase(Index rows, std::size_t count) {
  KernelCase result{randomRows(1, rows + 1, count), Matrix<QQ>(rows, rows + 1)};
  result.equation[1][1] = QQ(1);
  for (Index i = 1; i <= rows; ++i) {
    result.rows[i][1] = -result.equation[1][i + 1];
    result.rows[i][i + 1] = QQ(1);
  }
  mixRows(result.rows, 2 * rows);
  return result;
}

test::IntegerRows gmpRows(const Matrix<QQ>& matrix) {
  test::IntegerRows rows;
  for (const Vector<QQ>& row : matrix) {
    auto& copy = rows.emplace_back();
    for (const QQ& entry : row) copy.emplace_back(entry.numerator().get());
  }
  return rows;
}

std::string nameOf(Index rows, std::size_t count) {
  return std::to_string(rows) + "_rows_" + std::to_string(count) + "_digits";
}

/// make() builds the input and gives the body of the loop.
template <class Make>
void addCase(const std::string& operation, Index rows, std::size_t digits,
             const std::string& subject, Make make) {
  add(operation, nameOf(rows, digits), subject, [=](State& state) {
    const auto body = make();
    for (auto _ : state) benchmark::DoNotOptimize(body());
    count(state, static_cast<std::size_t>(rows));
  })->Unit(benchmark::kMillisecond);
}

void addConditions(Index rows, std::size_t digits) {
  addCase("lll_conditions", rows, digits, "QQ", [=] {
    return [basis = reducedBasis(rows, digits)] {
      return firstLllViolation(basis, QQ(999'999'999, 1'000'000'000), QQ(1, 2)).has_value();
    };
  });
}

void addUnimodular(Index rows, std::size_t digits) {
  addCase("is_unimodular", rows, digits, "QQ", [=] {
    return [matrix = unimodularMatrix(rows, digits)] { return isUnimodular(matrix); };
  });
}

void addUnimodularPeer(Index rows, std::size_t digits) {
  addCase("is_unimodular", rows, digits, "peer_bareiss", [=] {
    return [matrix = gmpRows(unimodularMatrix(rows, digits))] {
      return abs(test::determinantByBareiss(matrix)) == 1;
    };
  });
}

void addHermiteForm(Index rows, std::size_t digits) {
  addCase("hermite_form", rows, digits, "QQ", [=] {
    return [matrix = randomRows(rows, rows, digits)] { return hermiteForm(matrix); };
  });
}

/// Euclid's scheme ends with numbers of thousands of digits at twenty rows already.
void addHermitePeer(Index rows, std::size_t digits) {
  addCase("hermite_form", rows, digits, "peer_euclid", [=] {
    return [matrix = gmpRows(randomRows(rows, rows, digits)), rows] {
      return test::hermiteByEuclid(matrix, static_cast<std::size_t>(rows));
    };
  });
}

void addEquality(Index rows, std::size_t digits) {
  addCase("same_lattice", rows, digits, "QQ", [=] {
    const Matrix<QQ> before = randomRows(rows, rows + 1, digits);
    Matrix<QQ> after = before;
    mixRows(after, 2 * rows);
    return [before, after] { return sameLattice(before, after); };
  });
}

void addKernel(Index rows, std::size_t digits) {
  addCase("is_kernel_basis", rows, digits, "QQ", [=] {
    return
        [kernel = kernelCase(rows, digits)] { return isKernelBasis(kernel.rows, kernel.equation); };
  });
}

/// All rows of a basis over another one of the same lattice.
void addCoordinates(Index rows, std::size_t digits) {
  addCase("coordinates", rows, digits, "QQ", [=] {
    const Matrix<QQ> basis = randomRows(rows, rows + 1, digits);
    Matrix<QQ> vectors = basis;
    mixRows(vectors, 2 * rows);
    return [basis, vectors] {
      const BasisSolver solver(basis);
      Index found = 0;
      for (const Vector<QQ>& vector : vectors)
        if (solver.integerCoordinates(vector)) ++found;
      return found;
    };
  });
}

/// By elimination in rationals.
void addCoordinatesPeer(Index rows, std::size_t digits) {
  addCase("coordinates", rows, digits, "peer_echelon", [=] {
    const Matrix<QQ> basis = randomRows(rows, rows + 1, digits);
    Matrix<QQ> vectors = basis;
    mixRows(vectors, 2 * rows);
    return [basis, vectors] {
      const CoordinateFactors<QQ> factors = factorBasis(basis);
      Vector<QQ> coordinates;
      Index found = 0;
      for (const Vector<QQ>& vector : vectors)
        if (solveCoordinates(factors, basis, vector, true, coordinates)) ++found;
      return found;
    };
  });
}

}  // namespace

void registerCertificates() {
  addHermiteForm(20, 3);
  addHermitePeer(20, 3);
  addCoordinatesPeer(40, 3);
  for (const Index rows : {40, 100}) {
    for (const std::size_t digits : {3U, 30U}) {
      addConditions(rows, digits);
      addUnimodular(rows, digits);
      // A hundred rows of thirty digits take seconds.
      if (rows * static_cast<Index>(digits) <= 1200) {
        addHermiteForm(rows, digits);
        addUnimodularPeer(rows, digits);
      }
      addEquality(rows, digits);
      addCoordinates(rows, digits);
      addKernel(rows, digits);
    }
  }
}

}  // namespace starsift::bench

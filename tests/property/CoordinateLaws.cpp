// Coordinates over bases that random unimodular matrices lead to, against the coefficients
// that the vectors are made of and against ranks by fraction-free elimination.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "algorithms/exact/CoordinateSolver.h"
#include "lattice/Lattice.h"
#include "numbers/Conversion.h"
#include "support/generators/LatticeGenerators.h"
#include "support/generators/NumberGenerators.h"
#include "support/oracles/BareissRows.h"

namespace starsift {
namespace {

using test::arbitraryRows;
using test::matrixFrom;
using test::Rows;

std::size_t rankOf(const Matrix<QQ>& matrix) {
  std::vector<std::vector<mpq_class>> rows;
  for (const Vector<QQ>& row : matrix) {
    auto& copy = rows.emplace_back();
    for (const QQ& entry : row) copy.push_back(test::gmpRational(entry));
  }
  return test::independentRowsByBareiss(test::scaledRows(rows)).size();
}

/// A basis, another one of its lattice, and what leads to that.
template <class T>
struct TwoBases {
  Matrix<T> first;
  Matrix<T> second;
  Matrix<T> transform;
};

template <class T>
TwoBases<T> arbitraryBases() {
  const auto n = *rc::gen::inRange<Index>(1, 5);
  const auto m = *rc::gen::inRange<Index>(n, n + 3);
  const Rows rows = *arbitraryRows(n, m, 9);
  RC_PRE(rankOf(matrixFrom<QQ>(rows, m)) == static_cast<std::size_t>(n));
  TwoBases<T> bases;
  bases.first = matrixFrom<T>(rows, m);
  const auto factors = rc::gen::map(rc::gen::inRange(-2, 3), [](int factor) { return QQ(factor); });
  bases.transform.convertFrom(test::arbitraryUnimodular(n, factors).matrix, false);
  bases.second = bases.transform * bases.first;
  return bases;
}

template <class T>
Vector<T> arbitraryCoefficients(Index count) {
  return test::vectorFrom<T>((*arbitraryRows(1, count, 20)).front());
}

template <class T>
void checkUnimodularImage() {
  const TwoBases<T> bases = arbitraryBases<T>();
  Lattice<T, long double> lattice(&bases.first);
  lattice.basis.replace(bases.second);
  const Vector<T> coefficients = arbitraryCoefficients<T>(lattice.basis.n);
  const Vector<T> vector = coefficients * bases.second;
  Vector<T> found;
  RC_ASSERT(lattice.coordinatesOf(vector, found, Over::working));
  RC_ASSERT(identical(found, coefficients));
  RC_ASSERT(lattice.coordinatesOf(vector, found, Over::saved));
  RC_ASSERT(identical(found, coefficients * bases.transform));
  const Matrix<T> all = lattice.coordinatesOfAll(bases.second, Over::saved);
  for (Index i = 1; i <= lattice.basis.n; ++i) RC_ASSERT(identical(all[i], bases.transform[i]));
}

RC_GTEST_PROP(CoordinatesOverQQ, LeadToABasisOfTheSameLattice, ()) {
  checkUnimodularImage<QQ>();
}

RC_GTEST_PROP(CoordinatesOverLongDouble, LeadToABasisOfTheSameLattice, ()) {
  checkUnimodularImage<long double>();
}

RC_GTEST_PROP(CoordinatesOverQQ, AreIntegersOnlyOnTheLattice, ()) {
  const TwoBases<QQ> bases = arbitraryBases<QQ>();
  const auto factors = factorBasis(bases.second);
  const Vector<QQ> coefficients = arbitraryCoefficients<QQ>(bases.second.rowCount());
  const auto parts = *rc::gen::inRange<long>(2, 4);
  const bool isWhole = std::all_of(coefficients.begin(), coefficients.end(), [parts](const QQ& c) {
    return NumberTraits<QQ>::remainder(c, QQ(parts)) == QQ();
  });
  Vector<QQ> vector = coefficients * bases.second;
  for (QQ& entry : vector) entry /= QQ(parts);
  Vector<QQ> found;
  RC_ASSERT(solveCoordinates(factors, bases.second, vector, true, found) == isWhole);
  RC_ASSERT(solveCoordinates(factors, bases.second, vector, false, found));
  for (Index i = 1; i <= found.dimension(); ++i) RC_ASSERT(QQ(parts) * found[i] == coefficients[i]);
}

template <class T>
void checkSpan() {
  const auto n = *rc::gen::inRange<Index>(1, 5);
  const auto m = *rc::gen::inRange<Index>(1, 6);
  Rows rows = *test::arbitraryDependentRows(n, m, *rc::gen::inRange<Index>(0, n + 1));
  const Vector<T> vector = arbitraryCoefficients<T>(m);
  Matrix<QQ> exact = matrixFrom<QQ>(rows, m);
  const std::size_t rank = rankOf(exact);
  exact.resize(n + 1, m, false);
  exact[n + 1].convertFrom(vector, false);
  const auto basis = matrixFrom<T>(rows, m);
  Vector<T> found;
  RC_ASSERT(solveCoordinates(factorBasis(basis), basis, vector, false, found) ==
            (rankOf(exact) == rank));
}

RC_GTEST_PROP(CoordinatesOverQQ, ExistExactlyInTheSpan, ()) {
  checkSpan<QQ>();
}

RC_GTEST_PROP(CoordinatesOverLongDouble, ExistExactlyInTheSpan, ()) {
  checkSpan<long double>();
}

}  // namespace
}  // namespace starsift

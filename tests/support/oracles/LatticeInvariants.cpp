#include "support/oracles/LatticeInvariants.h"

#include <cmath>
#include <sstream>
#include <vector>

#include "algorithms/exact/ExactProduct.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/oracles/OrthogonalCertificate.h"

namespace starsift::test {

namespace {

/// Collects what is wrong.
class Faults {
 public:
  void expect(bool holds, const std::string& claim) {
    if (!holds) text_ << "not so: " << claim << '\n';
  }
  std::string text() const { return text_.str(); }

 private:
  std::ostringstream text_;
};

std::string ofRow(const char* claim, Index k) {
  return claim + (" of row " + std::to_string(k));
}

template <class T>
bool isSquare(const Matrix<T>& matrix, Index order) {
  return matrix.rowCount() == order && (order == 0 || matrix.columnCount() == order);
}

/// |a - b| <= 10^-9 * (1 + |b|).
bool isNear(long double a, const mpq_class& b) {
  const mpq_class distance = abs(exactly(a) - b);
  return distance <= tenth(9) * (1 + abs(b));
}

mpq_class product(const std::vector<mpq_class>& a, const std::vector<mpq_class>& b) {
  mpq_class sum = 0;
  for (std::size_t j = 0; j < a.size(); ++j) sum += a[j] * b[j];
  return sum;
}

/// The rows of B and what Gram and Schmidt make of them.
class GramSchmidtFaults {
 public:
  template <class T>
  explicit GramSchmidtFaults(const Matrix<T>& basis)
      : rows_(exactRows(basis)), orthogonal_(orthogonalVectors(rows_)) {}

  /// Row k, which carries ST_MU.
  template <class T>
  void expectData(const Lattice<T, long double>& lattice, Index k, Faults& faults) const {
    const auto at = static_cast<std::size_t>(k - 1);
    faults.expect(isNear(lattice.gramSchmidt.bSq[k], product(rows_[at], rows_[at])),
                  ofRow("bSq", k));
    faults.expect(isNear(lattice.gramSchmidt.cLen[k], product(orthogonal_[at], orthogonal_[at])),
                  ofRow("cLen", k));
    for (Index j = 1; j < k; ++j)
      faults.expect(isNear(lattice.gramSchmidt.mu[k][j], coefficient(k, j)), ofRow("mu", k));
    faults.expect(lattice.gramSchmidt.mu[k][k] == 1, ofRow("the diagonal of mu", k));
  }

  void expectReduced(Index k, Faults& faults) const {
    for (Index j = 1; j < k; ++j)
      faults.expect(abs(coefficient(k, j)) <= mpq_class(1, 2) + tenth(9), ofRow("the size", k));
  }

 private:
  mpq_class coefficient(Index k, Index j) const {
    const auto& v = orthogonal_[static_cast<std::size_t>(j - 1)];
    return product(rows_[static_cast<std::size_t>(k - 1)], v) / product(v, v);
  }

  ExactRows rows_;
  ExactRows orthogonal_;
};

template <class T>
void expectStatus(const Lattice<T, long double>& lattice, Faults& faults) {
  const GramSchmidtFaults exact(lattice.basis.B());
  for (Index k = 1; k <= lattice.basis.n; ++k) {
    const StatusWord word = lattice.basis.vecStatus[k];
    faults.expect(!carries(word, ST_DEPENDENT), ofRow("independence", k));
    if (carries(word, ST_MU)) exact.expectData(lattice, k, faults);
    if (carries(word, ST_SIZE_REDUCED)) exact.expectReduced(k, faults);
  }
}

template <class T>
void expectImages(Lattice<T, long double>& lattice, Faults& faults) {
  const Matrix<long double>& images = lattice.basis.imagesUpTo(lattice.basis.n);
  for (Index k = 1; k <= lattice.basis.n; ++k)
    for (Index j = 1; j <= lattice.basis.m; ++j)
      faults.expect(
          images[k][j] == NumberConversion<long double, T>::nearest(lattice.basis.B()[k][j]),
          ofRow("the image", k));
}

/// The coordinates of a basis over itself.
template <class T>
void expectCoordinates(Lattice<T, long double>& lattice, const Matrix<T>& basis, bool useSaved,
                       Faults& faults) {
  const Matrix<T> unit = Matrix<T>::identity(lattice.basis.n);
  for (Index k = 1; k <= lattice.basis.n; ++k) {
    Vector<T> coordinates;
    faults.expect(
        lattice.coordinatesOf(basis[k], coordinates, useSaved ? Over::saved : Over::working) &&
            identical(coordinates, unit[k]),
        ofRow(useSaved ? "the coordinates in B_save" : "the coordinates", k));
  }
}

}  // namespace

template <class T>
std::string sizeFaults(const Lattice<T, long double>& lattice) {
  Faults faults;
  const Index n = lattice.basis.n;
  const Index m = lattice.basis.m;
  for (const auto* basis : {&lattice.basis.B(), &lattice.basis.B_save})
    faults.expect(basis->rowCount() == n && (n == 0 || basis->columnCount() == m),
                  "n x m entries of a basis");
  faults.expect(isSquare(lattice.gramSchmidt.mu, n), "n x n entries of mu");
  faults.expect(lattice.basis.TT.dimension() == 1 && isSquare(lattice.basis.TT[1], n),
                "one matrix in TT");
  for (const auto* vector :
       {&lattice.gramSchmidt.bSq, &lattice.gramSchmidt.cLen, &lattice.basis.vectorAmounts})
    faults.expect(vector->dimension() == n, "n entries per row");
  faults.expect(
      lattice.basis.vecStatus.dimension() == n && lattice.basis.vectorMarks.dimension() == n,
      "n words");
  for (const auto* vector :
       {&lattice.frame.c, &lattice.frame.l, &lattice.frame.r, &lattice.frame.lSave,
        &lattice.frame.rSave, &lattice.basis.scale, &lattice.basis.translation})
    faults.expect(vector->dimension() == m, "m entries per coordinate");
  faults.expect(m == 0 || lattice.basis.homScaled == lattice.homValue * lattice.basis.scale[m],
                "homScaled");
  for (const FiledSolution<T>& solution : lattice.found.solutions)
    faults.expect(solution.dimension() == m, "m coordinates of a solution");
  faults.expect(!lattice.found.bestVector.isSet() || lattice.found.bestVector.dimension() == m,
                "m coordinates of the best vector");
  faults.expect(!lattice.basis.keepDependent && !lattice.run.restoring, "flags of a step");
  faults.expect(lattice.run.swapBudget >= lattice.run.swapBudgetFloor, "the budget");
  return faults.text();
}

template <class T>
std::string knowledgeFaults(Lattice<T, long double>& lattice) {
  Faults faults;
  expectStatus(lattice, faults);
  expectImages(lattice, faults);
  const Matrix<T> raw = lattice.backMapAll(lattice.basis.B());
  if (lattice.params.consistency)
    faults.expect(identical(exactProduct(lattice.basis.TT[1], lattice.basis.B_save), raw),
                  "the tracked transformation");
  expectCoordinates(lattice, raw, false, faults);
  expectCoordinates(lattice, lattice.basis.B_save, true, faults);
  return faults.text();
}

template std::string sizeFaults(const Lattice<long double, long double>&);
template std::string sizeFaults(const Lattice<QQ, long double>&);
template std::string knowledgeFaults(Lattice<long double, long double>&);
template std::string knowledgeFaults(Lattice<QQ, long double>&);

}  // namespace starsift::test

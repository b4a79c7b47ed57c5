#include "search/ReinsertBest.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "algorithms/reduction/SizeReduce.h"
#include "lattice/reduce/InsertCombination.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "search/Candidate.h"

namespace starsift {

namespace reinsertbest {

/// The first short vectors, as many, are tried: the test of one takes as long as a step of a pass.
constexpr std::ptrdiff_t mostVectors = 10;

/// A vector is shorter if its squared length is below this part of the other one.
constexpr long double delta = 0.99L;

/// Coefficients up to this magnitude are trusted, and keep the rows short.
constexpr long double mostMultiple = 1e6L;

/// Gram-Schmidt coefficients of a vector of working space over the first `count` rows.
template <class T, class R>
Vector<R> coefficientsOf(Lattice<T, R>& lattice, const Vector<R>& image, Index count) {
  const Matrix<R>& rows = lattice.basis.imagesUpTo(count);
  const auto& data = lattice.gramSchmidt;
  Vector<R> products(count);
  Vector<R> coefficients(count);
  for (Index j = 1; j <= count; ++j) {
    products[j] = image * rows[j];
    for (Index k = 1; k < j; ++k) products[j] -= data.mu[j][k] * products[k];
    coefficients[j] = products[j] / data.cLen[j];
  }
  return coefficients;
}

/// The first row whose orthogonal length exceeds that of the vector there; 0 if there is none.
template <class R>
Index placeOf(const Vector<R>& coefficients, R squaredLength, const Vector<R>& cLen) {
  for (Index i = 1; i <= coefficients.dimension(); ++i) {
    if (squaredLength < R(delta) * cLen[i]) return i;
    squaredLength -= coefficients[i] * coefficients[i] * cLen[i];
  }
  return 0;
}

/// The integers x with x * rows == vector; empty unless that holds exactly and they are small.
template <class T, class R>
std::vector<R> integerCoefficients(const Lattice<T, R>& lattice, Vector<T> vector,
                                   Vector<R> coefficients) {
  const Index count = coefficients.dimension();
  std::vector<R> integers(static_cast<std::size_t>(count));
  for (Index i = count; i >= 1; --i) {
    const R x = std::round(coefficients[i]);
    if (!(std::fabs(x) <= R(mostMultiple))) return {};
    integers[static_cast<std::size_t>(i - 1)] = x;
    if (x == R()) continue;
    for (Index j = 1; j < i; ++j) coefficients[j] -= x * lattice.gramSchmidt.mu[i][j];
    subtractMultiple(vector, lattice.basis.B()[i], NumberConversion<T, R>::ofInteger(x));
  }
  return supNorm(vector) == T() ? integers : std::vector<R>();
}

/// True if the vector of working space became a row.
template <class T, class R>
bool insert(Lattice<T, R>& lattice, const Vector<T>& vector) {
  const Index count = lattice.gramSchmidt.validUpTo(lattice.basis);
  Vector<R> image(vector.dimension());
  std::transform(vector.begin(), vector.end(), image.begin(), NumberConversion<R, T>::nearest);
  const Vector<R> coefficients = coefficientsOf(lattice, image, count);
  const Index place = placeOf<R>(coefficients, image * image, lattice.gramSchmidt.cLen);
  if (place == 0) return false;
  std::vector<R> integers = integerCoefficients(lattice, vector, coefficients);
  integers.erase(integers.begin(),
                 integers.begin() + std::min<Index>(place - 1, std::ssize(integers)));
  // A vector of the span of the rows before its place seems to be short there by rounding.
  if (std::all_of(integers.begin(), integers.end(), [](const R& x) { return x == R(); }))
    return false;
  insertCombination(lattice.basis, place, std::move(integers));
  return true;
}

}  // namespace reinsertbest

template <class T, class R>
Index reinsertBest(Lattice<T, R>& lattice) {
  Index insertions = 0;
  const auto& known = lattice.found.shortVectors.entries();
  // A copy: rows that the reduction meets change the collection.
  const std::vector best(known.begin(),
                         known.begin() + std::min(std::ssize(known), reinsertbest::mostVectors));
  for (const auto& entry : best) {
    if (!notifyStep(lattice)) break;
    if (!reinsertbest::insert(lattice, lattice.forwardMap(*entry.vector))) continue;
    ++insertions;
    lattice.reduce(0);
  }
  return insertions;
}

template Index reinsertBest(Lattice<long double, long double>&);
template Index reinsertBest(Lattice<QQ, long double>&);

}  // namespace starsift

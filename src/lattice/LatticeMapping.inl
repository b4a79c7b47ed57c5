// Lattice: from points of the problem to raw coordinates and back, the transformation
// between raw coordinates and the scaled and translated ones of the working basis, and
// the coordinates of vectors in a basis. What knows only the problem stands in
// ProblemPoint.h.
#pragma once

#include <cassert>
#include <utility>

#include "algorithms/exact/CoordinateSolver.h"
#include "lattice/Lattice.h"
#include "numbers/ExactArithmetic.h"
#include "problem/ProblemPoint.h"

namespace starsift {

namespace latticemapping {

/// (2 * value - h * middle) * scale, the middle counted twice.
template <class T>
T centred(const T& value, const T& h, const T& middle, const T& scale) {
  T result = ExactArithmetic<T>::product(T(2), value);
  ExactArithmetic<T>::subtractProduct(result, h, middle);
  return ExactArithmetic<T>::product(result, scale);
}

}  // namespace latticemapping

template <class T, class R>
void Lattice<T, R>::opt2lat(const Vector<T>& x, Vector<T>& out, bool transform,
                            const std::optional<T>& hom) const {
  if (latticeKind == LatticeKind::none) fail("opt2lat called with uninitialized check vectors!");
  const T h = hom.value_or(T(1));
  Vector<T> z = originalVariables<T>(*this, x);
  appendSlacks<T>(*this, z, hom);
  const bool hasEquations = latticeKind == LatticeKind::equations && !equationsRemoved;
  Vector<T> residuals;
  if (hasEquations || this->modulusCount() > 0) residuals = equationResiduals<T>(*this, z, h);
  if (modsInLattice)
    appendModulusFactors<T>(*this, z, residuals);
  else
    checkCongruences<T>(*this, residuals);
  Vector<T> vector(m);
  if (latticeKind == LatticeKind::full) setRowCoordinates(z, h, vector);
  if (hasEquations) std::move(residuals.begin(), residuals.end(), vector.begin());
  setVariableCoordinates(z, h, vector);
  vector[m] = ExactArithmetic<T>::product(this->homValue, h);
  out = transform ? forwardMap(vector, false) : std::move(vector);
}

template <class T, class R>
void Lattice<T, R>::setRowCoordinates(const Vector<T>& z, const T& h, Vector<T>& out) const {
  Index column = 0;
  if (this->atuValid) {
    ++column;
    out[column] =
        latticemapping::centred<T>(rowValue(this->atu, z), h, this->rtu + this->ltu, c[column]);
  }
  for (Index i = 1; i <= this->Au.rowCount(); ++i) {
    ++column;
    out[column] = latticemapping::centred<T>(rowValue(this->Au[i], z), h, this->lu[i] + this->ru[i],
                                             c[column]);
  }
}

template <class T, class R>
void Lattice<T, R>::setVariableCoordinates(const Vector<T>& z, const T& h, Vector<T>& out) const {
  using Exact = ExactArithmetic<T>;
  const Index before = m - 1 - z.dimension();
  assert(before >= 0);
  for (Index i = 1; i <= z.dimension(); ++i) {
    T coordinate = Exact::product(T(2), Exact::product(z[i], c[before + i]));
    Exact::subtractProduct(coordinate, rangeMultiple, h);
    out[before + i] = std::move(coordinate);
  }
}

template <class T, class R>
T Lattice<T, R>::lat2opt(const Vector<T>& vector, Vector<T>& out, bool insert, bool withSlack,
                         bool normalise) const {
  if (latticeKind == LatticeKind::none) fail("lat2opt called with uninitialized check vectors!");
  if (vector.dimension() == 0) fail("lat_vec == 0");
  if (vector.dimension() != m) fail("lat_vec doesn't match lattice dimension");
  for (const T& entry : vector) checkedRange(entry, "lat_vec overflow");
  T h = ExactArithmetic<T>::quotient(vector[m], this->homValue);
  const bool negative = normalise && h == T(-1);
  if (negative) h = T(1);
  const Index count = withSlack ? this->rx.dimension() : this->originalCount();
  out = pointAsRead<T>(*this, variablesOf(vector, h, negative, count), insert);
  return h;
}

template <class T, class R>
Vector<T> Lattice<T, R>::variablesOf(const Vector<T>& vector, const T& h, bool negative,
                                     Index count) const {
  using Exact = ExactArithmetic<T>;
  const Index before = columnsBeforeVariables();
  assert(before >= 0);
  const T sign(negative ? -1 : 1);
  Vector<T> z(count);
  for (Index i = 1; i <= count; ++i) {
    T coordinate = Exact::product(rangeMultiple, h);
    Exact::addProduct(coordinate, sign, vector[before + i]);
    z[i] = Exact::quotient(coordinate, Exact::product(T(2), c[before + i]));
  }
  return z;
}

template <class T, class R>
Vector<T> Lattice<T, R>::forwardMap(const Vector<T>& vector, bool inverse) const {
  return mapped(vector, inverse, params.translate);
}

template <class T, class R>
Vector<T> Lattice<T, R>::mapped(const Vector<T>& vector, bool inverse, bool translated) const {
  Vector<T> result(vector);
  const bool moves = translated && m > 0 && !(vector.element(m) == T());
  if (inverse) {
    if (moves) {
      const T t = vector[m] / homScaled;
      for (Index i = 1; i <= m; ++i) NumberTraits<T>::addProduct(result[i], t, translation[i]);
    }
    result /= scale;
    return result;
  }
  result *= scale;
  if (moves) {
    const T t = vector[m] / this->homValue;
    for (Index i = 1; i <= m; ++i) NumberTraits<T>::subtractProduct(result[i], t, translation[i]);
  }
  return result;
}

template <class T, class R>
Matrix<T> Lattice<T, R>::forwardMapAll(const Matrix<T>& rows) const {
  Matrix<T> result(rows);
  for (Vector<T>& row : result) row = forwardMap(row, false);
  return result;
}

template <class T, class R>
Matrix<T> Lattice<T, R>::backMapAll(const Matrix<T>& rows) const {
  Matrix<T> result(rows);
  for (Vector<T>& row : result) row = forwardMap(row, true);
  return result;
}

template <class T, class R>
bool Lattice<T, R>::coordinatesOf(const Vector<T>& vector, Vector<T>& out, bool useSaved,
                                  bool round) {
  return useSaved ? coordinatesOver(savedFactors, B_save, vector, round, out)
                  : coordinatesOver(workingFactors, backMapAll(B), vector, round, out);
}

template <class T, class R>
Matrix<T> Lattice<T, R>::coordinatesOfAll(const Matrix<T>& rows, bool useSaved, bool round) {
  std::optional<Matrix<T>> found =
      useSaved ? coordinatesOverAll(savedFactors, B_save, rows, round)
               : coordinatesOverAll(workingFactors, backMapAll(B), rows, round);
  if (!found) throw PrecisionException("transformation coord error");
  return std::move(*found);
}

}  // namespace starsift

// Lattice: from points of the problem to raw coordinates and back, and the coordinates of
// vectors in a basis. The part that needs only the problem is in ProblemPoint.h, the map between
// raw and working space in Basis.
#pragma once

#include <utility>

#include "algorithms/exact/CoordinateSolver.h"
#include "lattice/Lattice.h"
#include "numbers/ExactArithmetic.h"
#include "problem/ProblemPoint.h"

namespace starsift {

namespace latticemapping {

/// (2 * value - h * middle) * scale, for `middle` = twice the middle of a range.
template <class T>
T centred(const T& value, const T& h, const T& middle, const T& scale) {
  T result = ExactArithmetic<T>::product(T(2), value);
  ExactArithmetic<T>::subtractProduct(result, h, middle);
  return ExactArithmetic<T>::product(result, scale);
}

/// Sets the coordinates of target and inequations of `out` to their values at z minus h times
/// their middle, scaled.
template <class T, class R>
void setRows(const Lattice<T, R>& lattice, const Vector<T>& z, const T& h, Vector<T>& out) {
  const CoordinateBlocks blocks = lattice.blocks();
  const Vector<T>& c = lattice.frame.c;
  for (const Index j : blocks.target)
    out[j] = centred<T>(rowValue(lattice.atu, z), h, lattice.rtu + lattice.ltu, c[j]);
  for (Index i = 1; i <= blocks.inequations.count; ++i) {
    const Index j = blocks.inequations.at(i);
    out[j] = centred<T>(rowValue(lattice.Au[i], z), h, lattice.lu[i] + lattice.ru[i], c[j]);
  }
}

/// Sets the coordinates of the variables z, followed by the moduli if these are in the lattice,
/// to their values minus h times the middle of their range, scaled.
template <class T, class R>
void setVariables(const Lattice<T, R>& lattice, const Vector<T>& z, const T& h, Vector<T>& out) {
  using Exact = ExactArithmetic<T>;
  const CoordinateBlock variables = lattice.blocks().variables;
  for (Index i = 1; i <= z.dimension(); ++i) {
    const Index j = variables.at(i);
    T coordinate = Exact::product(T(2), Exact::product(z[i], lattice.frame.c[j]));
    Exact::subtractProduct(coordinate, lattice.frame.rangeMultiple, h);
    out[j] = std::move(coordinate);
  }
}

/// The first `count` variables of a raw vector with the factor h, or of its negative.
template <class T, class R>
Vector<T> variablesOf(const Lattice<T, R>& lattice, const Vector<T>& vector, const T& h,
                      bool isNegative, Index count) {
  using Exact = ExactArithmetic<T>;
  const CoordinateBlock variables = lattice.blocks().variables;
  const T sign(isNegative ? -1 : 1);
  Vector<T> z(count);
  for (Index i = 1; i <= count; ++i) {
    const Index j = variables.at(i);
    T coordinate = Exact::product(lattice.frame.rangeMultiple, h);
    Exact::addProduct(coordinate, sign, vector[j]);
    z[i] = Exact::quotient(coordinate, Exact::product(T(2), lattice.frame.c[j]));
  }
  return z;
}

}  // namespace latticemapping

template <class T, class R>
CoordinateBlocks Lattice<T, R>::blocks() const {
  return frame.blocks(*this, basis.m);
}

template <class T, class R>
void Lattice<T, R>::opt2lat(const Vector<T>& x, Vector<T>& out, Space space,
                            const std::optional<T>& hom) const {
  if (frame.latticeKind == LatticeKind::none)
    fail("opt2lat called with uninitialized check vectors!");
  const T h = hom.value_or(T(1));
  Vector<T> z = originalVariables<T>(*this, x);
  appendSlacks<T>(*this, z, hom);
  const bool hasEquations = blocks().equations.count > 0;
  Vector<T> residuals;
  if (hasEquations || this->modulusCount() > 0) residuals = equationResiduals<T>(*this, z, h);
  if (frame.modsInLattice)
    appendModulusFactors<T>(*this, z, residuals);
  else
    checkCongruences<T>(*this, residuals);
  Vector<T> vector(basis.m);
  latticemapping::setRows(*this, z, h, vector);
  if (hasEquations) std::move(residuals.begin(), residuals.end(), vector.begin());
  latticemapping::setVariables(*this, z, h, vector);
  vector[basis.m] = ExactArithmetic<T>::product(this->homValue, h);
  out = space == Space::working ? forwardMap(vector) : std::move(vector);
}

template <class T, class R>
T Lattice<T, R>::lat2opt(const Vector<T>& vector, Vector<T>& out, Constants constants,
                         Slacks slacks, Orientation orientation) const {
  if (frame.latticeKind == LatticeKind::none)
    fail("lat2opt called with uninitialized check vectors!");
  if (vector.dimension() == 0) fail("lat_vec == 0");
  if (vector.dimension() != basis.m) fail("lat_vec doesn't match lattice dimension");
  for (const T& entry : vector) checkedRange(entry, "lat_vec overflow");
  T h = ExactArithmetic<T>::quotient(vector[basis.m], this->homValue);
  const bool isNegative = orientation == Orientation::either && h == T(-1);
  if (isNegative) h = T(1);
  const Index count = slacks == Slacks::append ? this->rx.dimension() : this->originalCount();
  out = pointAsRead<T>(*this, latticemapping::variablesOf(*this, vector, h, isNegative, count),
                       constants == Constants::insert);
  return h;
}

template <class T, class R>
Vector<T> Lattice<T, R>::forwardMap(const Vector<T>& vector) const {
  return basis.toWorking(vector, this->homValue);
}

template <class T, class R>
Vector<T> Lattice<T, R>::backMap(const Vector<T>& vector) const {
  return basis.toRaw(vector);
}

template <class T, class R>
Matrix<T> Lattice<T, R>::forwardMapAll(const Matrix<T>& rows) const {
  return basis.toWorking(rows, this->homValue);
}

template <class T, class R>
Matrix<T> Lattice<T, R>::backMapAll(const Matrix<T>& rows) const {
  return basis.toRaw(rows);
}

template <class T, class R>
bool Lattice<T, R>::coordinatesOf(const Vector<T>& vector, Vector<T>& out, Over over,
                                  Coordinates kind) {
  const bool round = kind == Coordinates::integer;
  return over == Over::saved
             ? coordinatesOver(basis.savedFactors, basis.B_save, vector, round, out)
             : coordinatesOver(basis.workingFactors, basis.untransformed(), vector, round, out);
}

template <class T, class R>
Matrix<T> Lattice<T, R>::coordinatesOfAll(const Matrix<T>& rows, Over over, Coordinates kind) {
  const bool round = kind == Coordinates::integer;
  std::optional<Matrix<T>> coordinates =
      over == Over::saved
          ? coordinatesOverAll(basis.savedFactors, basis.B_save, rows, round)
          : coordinatesOverAll(basis.workingFactors, basis.untransformed(), rows, round);
  if (!coordinates) throw PrecisionException("transformation coord error");
  return std::move(*coordinates);
}

}  // namespace starsift

// The problem record: targets, equations, inequations and bounds over n variables.
//
//   targets      At x      maximised, minimised or as close to dt as possible
//   equations    Ag x = bg, or a congruence modulo qg if qg has a modulus
//   inequations  lu <= Au x <= ru
//   variables    lx <= x <= rx, in steps of 10^-dx
//
// Read by OptReader.h over QQ; the long double record is converted from it.
#pragma once

#include <string>

#include "core/Matrix.h"
#include "core/Pair.h"
#include "problem/FreedomDegree.h"

namespace starsift {

/// The record of one problem. n, the number of variables, is rx.dimension(). The
/// fields keep the short names of the model.
template <class T>
class Vanu {
 public:
  Vanu();
  Vanu(const Vanu&);
  Vanu(Vanu&&) noexcept;
  Vanu& operator=(const Vanu&);
  Vanu& operator=(Vanu&&) noexcept;
  virtual ~Vanu();

  /// Clears all vectors, matrices and lists and resets counts and state flags; without
  /// `keepPaths` the paths too. fixedTargets stays.
  void clear(bool keepPaths);

  /// Copies every field, numbers converted strictly: PrecisionException if T can't hold
  /// one; this record is partly converted then.
  template <class U>
  void convertFrom(const Vanu<U>& source);

  /// Appends a variable to fd, lx, rx and dx; the caller extends the matrices.
  void addVariable(const T& lower, const T& upper, const T& decimals);

  /// +1 for a target to maximise, else -1. 1 <= i <= dt.dimension().
  T targetSign(Index i) const;

  /// Sets fixedTargets: true if every target has a finite goal.
  void updateFixedTargets();

  /// Number of equations that were one-sided inequations or finite goals: the last rows of Ag,
  /// the inequations first.
  Index liftedRowCount() const { return slackCount + deviationCount / 2; }
  /// Number of congruences among the equations and, after normalisation, of their columns at the
  /// end of Ag and Au, in the same order.
  Index modulusCount() const;
  /// Number of variables that are neither slacks nor deviations; they come first, then the slacks.
  Index originalCount() const { return rx.dimension() - slackCount - deviationCount; }

  /// Paths of the problem and of its solutions; empty when not set.
  std::string optFile;
  std::string solFile;

  /// Goal per target: +inf to maximise, -inf to minimise, finite: to reach.
  Vector<T> dt;
  /// Threshold per target; a copy of dt if the file has none.
  Vector<T> kt;
  /// Range of the aggregated target value, adjusted when fixed variables are removed.
  T ltu = T();
  T rtu = T();
  /// Target rows, one per entry of dt, n columns.
  Matrix<T> At;
  /// True if ltu and rtu are valid.
  bool atuValid = false;
  /// Sum of the target rows, each times its target sign.
  Vector<T> atu;
  /// Right-hand sides of the equations.
  Vector<T> bg;
  /// Moduli of the equations: empty, or one per equation, 0 for a plain equation.
  Vector<T> qg;
  /// Bounds of the inequations, -inf and +inf allowed.
  Vector<T> lu;
  Vector<T> ru;
  /// Equation rows.
  Matrix<T> Ag;
  /// Inequation rows.
  Matrix<T> Au;
  /// Decimal places per variable.
  Vector<T> dx;
  /// Bounds per variable, -inf and +inf allowed.
  Vector<T> lx;
  Vector<T> rx;
  /// Kind of each variable, derived from lx and rx.
  SerializableArray<FreedomDegree> fd;
  /// Shift by which each variable was moved to start at 0, one entry per column of Ag; set
  /// by normalisation.
  Vector<T> shift;
  /// Units of a variable per 1: above 1 if a slack or deviation counts in fractions;
  /// set by normalisation.
  Vector<T> slackUnit;
  /// Variables removed because lx = rx, in order of removal: original index, value.
  Array<Pair<Index, T>> fixedVars;
  /// 1-based indices, not counting fixed variables, of the variables that were negated
  /// because only rx was finite.
  Array<Index> swappedVars;
  /// True if every goal is finite; set by the reader.
  bool fixedTargets = false;
  /// Number of equations that were one-sided inequations, and of the variables added for them.
  Index slackCount = 0;
  /// Number of variables added for finite goals, two per target.
  Index deviationCount = 0;
  /// True if the rows were lifted into normal form.
  bool lifted = false;
  /// True while the lattice itself sets parameters: their reactions do nothing.
  bool reactionsOff = false;
  /// True if the tracking of transformations was restarted.
  bool trackingRestarted = false;
  /// Value of the last coordinate of the inhomogeneous lattice row.
  T homValue = T(1);
};

template <class T>
template <class U>
void Vanu<T>::convertFrom(const Vanu<U>& source) {
  using Number = NumberConversion<T, U>;
  optFile = source.optFile;
  solFile = source.solFile;
  dt.convertFrom(source.dt, false);
  kt.convertFrom(source.kt, false);
  ltu = Number::convert(source.ltu);
  rtu = Number::convert(source.rtu);
  At.convertFrom(source.At, false);
  atuValid = source.atuValid;
  atu.convertFrom(source.atu, false);
  bg.convertFrom(source.bg, false);
  qg.convertFrom(source.qg, false);
  lu.convertFrom(source.lu, false);
  ru.convertFrom(source.ru, false);
  Ag.convertFrom(source.Ag, false);
  Au.convertFrom(source.Au, false);
  dx.convertFrom(source.dx, false);
  lx.convertFrom(source.lx, false);
  rx.convertFrom(source.rx, false);
  fd = source.fd;
  shift.convertFrom(source.shift, false);
  slackUnit.convertFrom(source.slackUnit, false);
  fixedVars.resize(source.fixedVars.dimension(), false);
  for (Index i = 1; i <= fixedVars.dimension(); ++i) {
    fixedVars[i].left = source.fixedVars[i].left;
    fixedVars[i].right = Number::convert(source.fixedVars[i].right);
  }
  swappedVars = source.swappedVars;
  fixedTargets = source.fixedTargets;
  slackCount = source.slackCount;
  deviationCount = source.deviationCount;
  lifted = source.lifted;
  reactionsOff = source.reactionsOff;
  trackingRestarted = source.trackingRestarted;
  homValue = Number::convert(source.homValue);
}

}  // namespace starsift

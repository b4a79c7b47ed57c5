// The problem record: targets, equations, inequations and bounds over n variables.
//
//   targets      At x      maximised, minimised or wanted at dt
//   equations    Ag x = bg, congruent modulo qg where qg says so
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

  /// Empties all vectors, matrices and lists and clears counts and state flags.
  /// Without `keepPaths` the paths too. fixedTargets stays.
  void clear(bool keepPaths);

  /// Takes every field, numbers converted strictly: PrecisionException where T
  /// can't hold one; this record is half converted then.
  template <class U>
  void convertFrom(const Vanu<U>& source);

  /// Appends a variable to fd, lx, rx and dx; the matrices are the caller's.
  void addVariable(const T& lower, const T& upper, const T& decimals);

  /// +1 for a target to maximise, else -1. 1 <= i <= dt.dimension().
  T targetSign(Index i) const;

  /// True when every target has a finite goal.
  void updateFixedTargets();

  /// Equations that were one-sided inequations or finite goals: the last rows of Ag, the
  /// inequations first.
  Index liftedRowCount() const { return slackCount + deviationCount / 2; }
  /// Congruences among the equations, and after normalisation their columns at the end of
  /// Ag and Au, in the same order.
  Index modulusCount() const;
  /// Variables that are neither slacks nor deviations; they come first, the slacks follow.
  Index originalCount() const { return rx.dimension() - slackCount - deviationCount; }

  /// Paths of the problem and of its solutions; empty when not set.
  std::string optFile;
  std::string solFile;

  /// Goal per target: +inf maximise, -inf minimise, finite: to reach.
  Vector<T> dt;
  /// Threshold per target; a copy of dt where the file gives none.
  Vector<T> kt;
  /// Range of the aggregated target value, changed when fixed variables go.
  T ltu = T();
  T rtu = T();
  /// Target rows, one per entry of dt, n columns.
  Matrix<T> At;
  /// ltu and rtu hold.
  bool atuValid = false;
  /// Sum of the target rows, each times its target sign.
  Vector<T> atu;
  /// Right-hand sides of the equations.
  Vector<T> bg;
  /// Moduli of the equations: empty, or one each with 0 for a plain equation.
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
  /// What each variable was moved by to start at 0, one entry per column of Ag; set by
  /// normalisation.
  Vector<T> shift;
  /// Units of a variable to 1: above 1 where a slack or deviation counts in fractions;
  /// set by normalisation.
  Vector<T> slackUnit;
  /// Variables removed because lx = rx, in order of removal: original index, value.
  Array<Pair<Index, T>> fixedVars;
  /// 1-based indices, fixed variables not counted, of the variables negated because only
  /// rx was finite.
  Array<Index> swappedVars;
  /// Every goal is finite; set by the reader.
  bool fixedTargets = false;
  /// Equations that were one-sided inequations, and the variables added for them.
  Index slackCount = 0;
  /// Variables added for finite goals, two per target.
  Index deviationCount = 0;
  /// The rows were lifted into normal form.
  bool lifted = false;
  /// The lattice itself is setting parameters: their reactions do nothing.
  bool reactionsOff = false;
  /// The tracking of transformations was started anew.
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

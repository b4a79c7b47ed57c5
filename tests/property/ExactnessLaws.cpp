// Where the tolerance of equations doesn't matter: the answer of the problem against the
// check of points, which has the tolerance.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "numbers/VectorQQ.h"
#include "problem/Exactness.h"
#include "stars/StarCheck.h"

namespace starsift {
namespace {

/// Below the inverse of the tolerance, about it and beyond.
long arbitraryDenominator() {
  return *rc::gen::element(1L, 2L, 7L, 31607L, 31627L, 31643L, 99999989L, 999999937L, 1000000000L,
                           1000000007L, 30000000000L);
}

QQ arbitraryFraction() {
  return QQ(*rc::gen::inRange(-9L, 10L), arbitraryDenominator());
}

/// One equation or congruence over two variables, at a point of theirs nearly satisfied.
struct NearlySatisfied {
  Vanu<QQ> problem;
  Vector<QQ> point;
  /// row * point - right-hand side.
  QQ residual;
};

NearlySatisfied arbitraryProblem() {
  NearlySatisfied made;
  Vanu<QQ>& problem = made.problem;
  problem.dx = Vector<QQ>{QQ(*rc::gen::inRange(0L, 11L)), QQ(0)};
  QQ unit(1);
  for (QQ k(0); k < problem.dx[1]; k += QQ(1)) unit /= QQ(10);
  const bool isConstant = *rc::gen::arbitrary<bool>();
  const QQ second = isConstant ? arbitraryFraction() : QQ(*rc::gen::inRange(-5L, 6L));
  made.point = {unit * QQ(*rc::gen::inRange(-5L, 6L)), second};
  problem.lx = {made.point[1] - QQ(1), second};
  problem.rx = {made.point[1] + QQ(1), isConstant ? second : second + QQ(1)};
  problem.Ag = {{arbitraryFraction(), arbitraryFraction()}};
  made.residual = QQ(*rc::gen::inRange(-1L, 2L), arbitraryDenominator());
  problem.bg = {problem.Ag[1] * made.point - made.residual};
  if (*rc::gen::arbitrary<bool>()) problem.qg = {arbitraryFraction()};
  return made;
}

bool isExactlySatisfied(const NearlySatisfied& made) {
  const Vector<QQ>& moduli = made.problem.qg;
  if (!moduli.isSet() || moduli[1].isZero()) return made.residual.isZero();
  return (made.residual / moduli[1]).isInteger();
}

RC_GTEST_PROP(Exactness, MeansThatTheCheckKeepsExactSolutionsOnly, ()) {
  const NearlySatisfied made = arbitraryProblem();
  StarChecker<QQ> checker(made.problem);
  Star<QQ> star{made.point[1], made.point[2]};
  const bool isKept = checker.check(star);
  const bool isExact = equationsHoldExactly(made.problem);
  RC_TAG(std::string(isExact ? "exact" : "inexact") + (isKept ? ", kept" : ", refused"));
  if (isExact && isKept) RC_ASSERT(isExactlySatisfied(made));
}

}  // namespace
}  // namespace starsift

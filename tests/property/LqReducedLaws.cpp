// A restarted run of the reduced factorisation against one from scratch.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "algorithms/reduction/LqReduced.h"
#include "support/generators/ContainerGenerators.h"

namespace starsift {
namespace {

using M = Matrix<long double>;

struct Factors {
  M Lr;
  M Q;
  Vector<long double> d;
  Array<M> cache;

  Index run(const M& a, Index kk, Index mm) { return lq_reduced(a, Lr, Q, d, &cache, kk, mm); }
};

/// The parts that a run that ended at `stop`, or at mm for 0, defines.
void expectSame(const Factors& a, const Factors& b, Index stop, Index mm) {
  const Index done = stop == 0 ? mm : stop - 1;
  for (Index k = 1; k <= done; ++k) {
    RC_ASSERT(a.d[k] == b.d[k]);
    RC_ASSERT(identical(a.Q[k], b.Q[k]));
    for (Index j = 1; j <= done; ++j) RC_ASSERT(a.Lr[j][k] == b.Lr[j][k]);
  }
  RC_ASSERT(a.cache.dimension() == b.cache.dimension());
  for (Index k = 1; k <= a.cache.dimension(); ++k) {
    RC_ASSERT(a.cache[k].rowCount() == mm - k + 1);
    RC_ASSERT(b.cache[k].rowCount() == mm - k + 1);
  }
}

/// Rows from kk on that a restart must be able to take from the cache.
void expectSameWorkRows(const Factors& a, const Factors& b, Index kk) {
  for (Index k = kk; k <= a.cache.dimension(); ++k)
    for (Index i = 1; i <= a.cache[k].rowCount(); ++i)
      RC_ASSERT(identical(a.cache[k][i], b.cache[k][i]));
}

/// Changes some rows from kk on: to random ones, or to the sum of two others.
void changeRows(M& a, Index kk) {
  for (Index j = kk; j <= a.rowCount(); ++j) {
    const int change = *rc::gen::inRange(0, 4);
    if (change == 0) {
      for (long double& entry : a[j])
        entry = static_cast<long double>(*rc::gen::inRange(-9, 10)) / 7;
    }
    if (change == 1 && j > 2) a[j] = a[j - 1] + a[j - 2];
  }
}

RC_GTEST_PROP(LqReduced, RestartsLikeARunFromScratch, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 8);
  const auto columns = *rc::gen::inRange<Index>(1, 9);
  auto a = test::matrixFrom<long double>(*test::arbitraryRows(rows, columns, 9), columns);
  for (Vector<long double>& row : a)
    for (long double& entry : row) entry /= 3;
  Factors factors;
  Index mm = *rc::gen::inRange<Index>(1, rows + 1);
  Index stop = factors.run(a, 1, mm);
  for (int round = 0; round < 6; ++round) {
    // Up to the row behind the last one whose pivot is known.
    const Index known = stop == 0 ? std::min(mm + 1, rows) : stop;
    const auto kk = *rc::gen::inRange<Index>(1, known + 1);
    mm = *rc::gen::inRange<Index>(kk, rows + 1);
    changeRows(a, kk);
    stop = factors.run(a, kk, mm);
    Factors scratch;
    RC_ASSERT(scratch.run(a, 1, mm) == stop);
    expectSame(factors, scratch, stop, mm);
    expectSameWorkRows(factors, scratch, kk);
  }
}

RC_GTEST_PROP(LqReduced, IsTheSameWithoutACache, ()) {
  const auto rows = *rc::gen::inRange<Index>(1, 8);
  const auto columns = *rc::gen::inRange<Index>(1, 9);
  const auto a = test::matrixFrom<long double>(*test::arbitraryRows(rows, columns, 99), columns);
  Factors cached;
  Factors plain;
  const Index stop = cached.run(a, 1, 0);
  RC_ASSERT(lq_reduced(a, plain.Lr, plain.Q, plain.d, {}, 1, 0) == stop);
  const Index done = stop == 0 ? rows : stop - 1;
  for (Index k = 1; k <= done; ++k) {
    RC_ASSERT(cached.d[k] == plain.d[k]);
    RC_ASSERT(identical(cached.Q[k], plain.Q[k]));
    RC_ASSERT(identical(cached.Lr[k], plain.Lr[k]));
  }
}

}  // namespace
}  // namespace starsift

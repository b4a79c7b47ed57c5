#include "lattice/state/VectorScore.h"

namespace starsift {

namespace {

/// Smaller by more than the tolerance.
template <class R>
bool below(const R& a, const R& b) {
  return a + NumberTraits<R>::tolerance() < b;
}

template <class R>
void checkInitialized(const VectorScore<R>& a, const VectorScore<R>& b) {
  if (a.status != b.status && (a.status == ScoreStatus::empty || b.status == ScoreStatus::empty))
    fail("Heuristic deviation is not initialized!");
}

/// The order of two records of equal status from the deviations on.
template <class R>
bool deviatesLess(const VectorScore<R>& a, const VectorScore<R>& b) {
  if (a.deviationIndex != b.deviationIndex) return a.deviationIndex < b.deviationIndex;
  if (below(a.firstDeviation, b.firstDeviation)) return true;
  if (below(b.firstDeviation, a.firstDeviation)) return false;
  if (below(a.deviationSum, b.deviationSum)) return true;
  if (below(b.deviationSum, a.deviationSum)) return false;
  return below(a.squaredNorm, b.squaredNorm);
}

}  // namespace

template <class R>
bool better(const VectorScore<R>& a, const VectorScore<R>& b) {
  if (&a == &b) return false;
  checkInitialized(a, b);
  if (a.status != b.status) return a.status == ScoreStatus::inhomogeneous;
  if (a.status == ScoreStatus::homogeneous) {
    if (below(a.squaredNorm, b.squaredNorm)) return true;
    if (below(b.squaredNorm, a.squaredNorm)) return false;
  }
  if (a.isSolution != b.isSolution) return a.isSolution;
  if (a.isSolution) return below(a.targetValue, b.targetValue);
  return deviatesLess(a, b);
}

template <class R>
bool sameScore(const VectorScore<R>& a, const VectorScore<R>& b) {
  return &a == &b || (!better(a, b) && !better(b, a));
}

template bool better(const VectorScore<long double>&, const VectorScore<long double>&);
template bool sameScore(const VectorScore<long double>&, const VectorScore<long double>&);

}  // namespace starsift

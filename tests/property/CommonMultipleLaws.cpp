// Widened ranges, against the search that looks at each of them.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "algorithms/exact/CommonMultiple.h"
#include "numbers/Gcd.h"

namespace starsift {
namespace {

/// lcmAdjust() without a look at what can't come any more. The range behind the last step
/// exceeds all common multiples of the cases here.
template <class T>
T widened(const T& multiple, const T& hi, const T& lo) {
  constexpr int steps = 2000;
  T best = lo;
  T least = lcmQQ(multiple, T(hi - lo));
  for (int step = 0; step <= steps; ++step) {
    const T low = lo - T(step);
    const T range = hi - low;
    const T common = lcmQQ(multiple, range);
    if (common < least) {
      least = common;
      best = low;
    }
    if (common == range || common == multiple) break;
  }
  return best;
}

template <class T>
void checkWidening(int multiple, int range, int lo, int unit) {
  const T denominator = T(unit);
  const T low = T(lo) / denominator;
  const T hi = T(lo + range) / denominator;
  const T whole = T(multiple) / denominator;
  RC_ASSERT(lcmAdjust(whole, hi, low) == widened(whole, hi, low));
}

RC_GTEST_PROP(CommonMultiple, RangeIsThatOfTheWholeSearch, ()) {
  const auto multiple = *rc::gen::inRange(1, 41);
  const auto range = *rc::gen::inRange(1, 41);
  const auto lo = *rc::gen::inRange(-50, 50);
  // Fractions of long double are exact with these.
  checkWidening<long double>(multiple, range, lo, *rc::gen::element(1, 2, 4));
  checkWidening<QQ>(multiple, range, lo, *rc::gen::inRange(1, 6));
}

}  // namespace
}  // namespace starsift

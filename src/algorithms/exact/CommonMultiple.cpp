#include "algorithms/exact/CommonMultiple.h"

#include "numbers/Gcd.h"

namespace starsift {

namespace {

constexpr int maxSteps = 100000;

}  // namespace

template <class T>
T lcmAdjust(const T& multiple, const T& hi, const T& lo) {
  T range = hi - lo;
  if (NumberTraits<T>::isZero(range)) return lo;
  T low = lo;
  T best = lo;
  T least = lcmQQ(multiple, range);
  T divisor = gcdQQ(multiple, range);
  // A common multiple is at least the range, so larger ranges can't improve on `least`.
  for (int step = 0;
       step < maxSteps && range < least && !(divisor == range) && !(divisor == multiple); ++step) {
    low -= T(1);
    range = hi - low;
    divisor = gcdQQ(multiple, range);
    T common = lcmQQ(multiple, range);
    if (common < least) {
      least = std::move(common);
      best = low;
    }
  }
  return best;
}

template long double lcmAdjust(const long double&, const long double&, const long double&);
template QQ lcmAdjust(const QQ&, const QQ&, const QQ&);

}  // namespace starsift

// The logarithm of the gamma function, for volumes of balls.
#pragma once

#include <cmath>

namespace starsift {

/// ln |gamma(x)|. Unlike std::lgamma, which stores a sign for all of the process, it may be called
/// by several threads at once.
inline double logGamma(double x) {
  int sign = 0;
  return lgamma_r(x, &sign);
}

}  // namespace starsift

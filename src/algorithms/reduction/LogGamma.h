// The logarithm of the gamma function, for volumes of balls.
#pragma once

#include <cmath>
#include <numbers>

namespace starsift {

/// ln |gamma(x)|. Unlike std::lgamma, which stores a sign for all of the process, it may be called
/// by several threads at once.
inline double logGamma(double x) {
  int sign = 0;
  return lgamma_r(x, &sign);
}

/// ln of the volume of the ball of radius 1 in so many dimensions.
inline double logBallVolume(double dimension) {
  return dimension / 2 * std::log(std::numbers::pi) - logGamma(dimension / 2 + 1);
}

}  // namespace starsift

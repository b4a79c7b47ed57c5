// What the user may decide where programs read the same file differently.
#pragma once

#include "numbers/QQ.h"

namespace starsift {

struct ReadOptions {
  /// Bounds of at least this magnitude are infinite; +infinity: only words for infinity are.
  QQ infinity = QQ(100'000'000'000L) * QQ(1'000'000'000L);
  /// The upper bound of an integer column between the markers of an MPS file without any bound.
  QQ integerUpper = QQ(1);
};

}  // namespace starsift

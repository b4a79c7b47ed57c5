// The limits that a user may set to a search.
#pragma once

#include "params/Params.h"

namespace starsift {

/// The search ends after a number of passes or some time, whatever it finds.
inline bool hasPassOrTimeLimit(const Params& params) {
  return params.iters >= 0 || params.rtime.get() > 0;
}

}  // namespace starsift

// Numbers of stars for what must grow linearly.
#pragma once

#include <array>
#include <string>

#include "core/Index.h"

namespace starsift::bench {

/// Equal items per second at all of them are linear growth.
constexpr std::array<Index, 3> starCounts{1000, 4000, 16000};

/// Variables of the stars that are counted.
constexpr Index growthVariables = 30;

inline std::string starsName(Index stars) {
  return std::to_string(stars) + "_stars";
}

}  // namespace starsift::bench

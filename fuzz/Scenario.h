// A small problem with stars, spelled by arbitrary bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/oracles/StarOracle.h"

namespace starsift::fuzz {

struct Scenario {
  oracle::Problem problem;
  std::vector<oracle::Record> records;

  /// The text of the .sol file.
  std::string starsText() const;
};

/// Every byte string spells one; where the bytes end, the smallest choice is taken.
/// All rows hold at one point, and the stars are points around it.
Scenario scenarioOf(std::string_view bytes);

}  // namespace starsift::fuzz

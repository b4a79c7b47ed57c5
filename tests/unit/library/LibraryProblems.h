// Problems of which more than one test makes searches.
#pragma once

#include <starsift/starsift.h>

#include <cstdint>
#include <vector>

namespace starsift::test {

/// 7 x + 11 y + 13 z = sum with all from 0 to 60.
inline Problem coins(int sum) {
  Problem problem;
  for (int i = 0; i < 3; ++i) problem.addVariable(0, 60);
  problem.addEquation({7, 11, 13}, sum);
  return problem;
}

/// The solutions of coins(), by trying all.
inline std::uint64_t coinsCount(int sum) {
  std::uint64_t count = 0;
  for (int x = 0; x <= 60; ++x)
    for (int y = 0; y <= 60; ++y) {
      const int rest = sum - 7 * x - 11 * y;
      if (rest >= 0 && rest % 13 == 0 && rest / 13 <= 60) ++count;
    }
  return count;
}

/// A market split: choices of the columns with the same sum in each row as every second column, in
/// the first one `excess` more. Weights are random, below 128; 7 rows of 60 take long, and have
/// hardly a solution with another excess than 0, 2 of 16 take no time.
inline Problem marketSplit(int rows, int columns, std::uint64_t seed, int excess = 0) {
  Problem problem;
  for (int i = 0; i < columns; ++i) problem.addVariable(0, 1);
  for (int row = 0; row < rows; ++row) {
    std::vector<int> weights;
    int sum = row == 0 ? excess : 0;
    for (int i = 0; i < columns; ++i) {
      seed = seed * 6364136223846793005U + 1442695040888963407U;
      weights.push_back(static_cast<int>(seed >> 57U));
      if (i % 2 == 0) sum += weights.back();
    }
    problem.addEquation(weights, sum);
  }
  return problem;
}

}  // namespace starsift::test

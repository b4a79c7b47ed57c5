// Rows of small integers for the tests of elimination.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "algorithms/IntegerRow.h"
#include "numbers/VectorQQ.h"

namespace starsift::test {

inline std::vector<IntegerRow> integerRows(
    std::initializer_list<std::initializer_list<long>> rows) {
  std::vector<IntegerRow> result;
  for (const auto& row : rows) {
    Vector<QQ> vector(static_cast<Index>(row.size()));
    std::copy(row.begin(), row.end(), vector.begin());
    result.emplace_back(vector);
  }
  return result;
}

}  // namespace starsift::test

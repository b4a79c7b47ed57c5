// Rows and matrices of small integers for the tests of elimination.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "algorithms/IntegerMatrix.h"
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

inline IntegerMatrix integerMatrix(std::initializer_list<std::initializer_list<long>> rows) {
  IntegerMatrix result;
  for (const auto& row : rows) {
    auto& entries = result.emplace_back();
    for (const long entry : row) entries.emplace_back(entry);
  }
  return result;
}

}  // namespace starsift::test

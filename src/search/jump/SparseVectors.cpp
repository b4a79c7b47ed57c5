#include "search/jump/SparseVectors.h"

namespace starsift {

SparseVectors transposed(const SparseVectors& rows, std::size_t columns) {
  std::vector<std::vector<SparseEntry>> sorted(columns);
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (const SparseEntry& entry : rows[i])
      sorted[entry.index].push_back({static_cast<std::uint32_t>(i), entry.value});
  SparseVectors result;
  for (const std::vector<SparseEntry>& column : sorted) {
    result.appendVector();
    for (const SparseEntry& entry : column) result.appendEntry(entry);
  }
  return result;
}

}  // namespace starsift

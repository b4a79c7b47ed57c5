#include "search/sieve/SieveBucket.h"

#include <algorithm>
#include <limits>

namespace starsift {

void SieveBucket::clear(std::size_t most, std::size_t length) {
  members_.clear();
  lengths_.clear();
  rows_ = BlockRows<float>(most, length);
}

void SieveBucket::add(const Member& member, const Block<float>* row, float squaredLength) {
  const float side = member.isOpposite ? -1.0F : 1.0F;
  Block<float>* const copy = rows_[size()];
  for (std::size_t i = 0; i < rows_.blocksPerRow(); ++i)
    for (std::size_t lane = 0; lane < blockSize; ++lane)
      copy[i].lane[lane] = side * row[i].lane[lane];
  members_.push_back(member);
  lengths_.push_back(squaredLength);
}

std::size_t SieveBucket::selectFrom(std::size_t first, float bound) {
  fillTile(first);
  const std::size_t count = size() - first;
  pairs_.resize(count * tileRows);
  return selectPairs(tile_, rows_[first], &lengths_[first], count, rows_.blocksPerRow(), bound,
                     pairs_.data());
}

/// No difference to a row that isn't there is short.
void SieveBucket::fillTile(std::size_t first) {
  const std::size_t entries = rows_.blocksPerRow() * blockSize;
  const std::size_t count = std::min(tileRows, size() - first);
  tile_.entries.assign(entries * tileRows, 0);
  tile_.lengths.fill(std::numeric_limits<float>::infinity());
  for (std::size_t k = 0; k < count; ++k) {
    for (std::size_t j = 0; j < entries; ++j)
      tile_.entries[j * tileRows + k] = rows_.at(first + k, j);
    tile_.lengths[k] = lengths_[first + k];
  }
}

}  // namespace starsift

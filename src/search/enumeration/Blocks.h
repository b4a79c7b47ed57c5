// Rows of floating-point numbers in blocks, for loops that the compiler turns into vector
// instructions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace starsift {

/// Numbers in a block. A sum over a row is made in as many independent parts.
constexpr std::size_t blockSize = 8;

template <class Real>
struct alignas(std::min<std::size_t>(blockSize * sizeof(Real), 64)) Block {
  Real lane[blockSize];
};

/// Rows of equal length, padded with zeros to whole blocks; indices are 0-based.
template <class Real>
class BlockRows {
 public:
  BlockRows() = default;
  /// All entries 0.
  BlockRows(std::size_t rows, std::size_t length)
      : perRow_((length + blockSize - 1) / blockSize), blocks_(rows * perRow_, Block<Real>{}) {}

  std::size_t blocksPerRow() const { return perRow_; }
  Block<Real>* operator[](std::size_t row) { return blocks_.data() + row * perRow_; }
  const Block<Real>* operator[](std::size_t row) const { return blocks_.data() + row * perRow_; }
  Real& at(std::size_t row, std::size_t j) {
    return (*this)[row][j / blockSize].lane[j % blockSize];
  }
  const Real& at(std::size_t row, std::size_t j) const {
    return (*this)[row][j / blockSize].lane[j % blockSize];
  }
  /// Row `to` := row `from`.
  void copyRow(std::size_t from, std::size_t to) {
    std::copy_n((*this)[from], perRow_, (*this)[to]);
  }

 private:
  std::size_t perRow_ = 0;
  std::vector<Block<Real>> blocks_;
};

}  // namespace starsift

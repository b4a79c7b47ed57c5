// Vectors near a random one, among which a sieve looks for short differences.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "search/enumeration/Blocks.h"
#include "search/sieve/SieveKernels.h"

namespace starsift {

/// Vectors of a list or their opposites, all on one side, their rows one behind the other.
class SieveBucket {
 public:
  struct Member {
    /// In the list.
    std::uint32_t index;
    /// The row is the opposite of the vector.
    bool isOpposite;
  };

  /// Removes all; from now on `most` vectors of `length` entries have room.
  void clear(std::size_t most, std::size_t length);
  /// `row` belongs to the vector of the list.
  void add(const Member& member, const Block<float>* row, float squaredLength);

  std::size_t size() const { return members_.size(); }
  const Member& member(std::size_t i) const { return members_[i]; }
  const Block<float>* row(std::size_t i) const { return rows_[i]; }

  /// Calls visit(a, b) for all a < b whose rows have a difference of a squared length below
  /// `bound`.
  template <class Visit>
  void visitClosePairs(float bound, const Visit& visit) {
    for (std::size_t first = 0; first < size(); first += tileRows) {
      const std::size_t pairs = selectFrom(first, bound);
      for (std::size_t i = 0; i < pairs; ++i) {
        const std::size_t a = first + pairs_[i] % tileRows;
        const std::size_t b = first + pairs_[i] / tileRows;
        if (a < b) visit(a, b);
      }
    }
  }

 private:
  /// Puts the pairs of one of tileRows vectors and another one, both from `first` on, into pairs_.
  std::size_t selectFrom(std::size_t first, float bound);
  void fillTile(std::size_t first);

  std::vector<Member> members_;
  std::vector<float> lengths_;
  BlockRows<float> rows_;
  SieveTile tile_;
  std::vector<std::uint32_t> pairs_;
};

}  // namespace starsift

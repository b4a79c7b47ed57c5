// Marks of rows that haven't changed since they were processed.
#pragma once

#include <algorithm>
#include <utility>

#include "core/Array.h"
#include "core/Index.h"

namespace starsift {

/// A mark per row, valid until the row changes; each change must be reported.
class RowMarks {
 public:
  /// Row k was changed.
  void forget(Index k) {
    if (isKnown(k)) marks_[k] = false;
  }
  /// Any row may have been changed; there are `count` of them.
  void forgetAll(Index count) {
    marks_.resize(count, false);
    std::fill(marks_.begin(), marks_.end(), false);
  }
  /// Rows i and j were swapped; row 0 has no mark.
  void swap(Index i, Index j) {
    if (isKnown(i) && isKnown(j)) {
      marks_.swap(i, j);
    } else {
      forget(i);
      forget(j);
    }
  }
  /// Marks row k; true if it was marked already.
  bool mark(Index k) { return isKnown(k) && std::exchange(marks_[k], true); }

 private:
  bool isKnown(Index k) const { return k >= 1 && k <= marks_.dimension(); }

  Array<bool> marks_;
};

}  // namespace starsift

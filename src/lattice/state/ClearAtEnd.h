// A flag that holds for one block.
#pragma once

namespace starsift {

/// Clears a flag at the end of a block, also where an exception ends it.
class ClearAtEnd {
 public:
  explicit ClearAtEnd(bool& flag) : flag_(flag) {}
  ClearAtEnd(const ClearAtEnd&) = delete;
  ClearAtEnd& operator=(const ClearAtEnd&) = delete;
  ~ClearAtEnd() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace starsift

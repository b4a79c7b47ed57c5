// A flag that is set for one block only.
#pragma once

namespace starsift {

/// Clears a flag at the end of a block, even if an exception ends it.
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

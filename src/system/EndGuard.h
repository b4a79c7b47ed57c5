// What must be ended with a block, however that is left.
#pragma once

namespace starsift {

/// Calls end() of an object at the end of a block, also after an exception.
template <class T>
class EndGuard {
 public:
  explicit EndGuard(T& object) : object_(object) {}
  EndGuard(const EndGuard&) = delete;
  EndGuard& operator=(const EndGuard&) = delete;
  ~EndGuard() { object_.end(); }

 private:
  T& object_;
};

}  // namespace starsift

// Moves the stars of a lattice aside during an operation.
#pragma once

#include "stars/Star.h"

namespace starsift {

/// Moves the stars out of an array and back at the end of its lifetime, even if an exception
/// ends it. Stars that the array got meanwhile are discarded.
template <class T>
class StarsAside {
 public:
  explicit StarsAside(Array<Star<T>>& stars) : stars_(stars) { stars_.exchange(aside_); }
  StarsAside(const StarsAside&) = delete;
  StarsAside& operator=(const StarsAside&) = delete;
  ~StarsAside() { stars_.exchange(aside_); }

  bool areThere() const { return aside_.dimension() > 0; }

 private:
  Array<Star<T>>& stars_;
  Array<Star<T>> aside_;
};

}  // namespace starsift

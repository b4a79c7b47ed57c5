// The stars of a lattice, out of reach of what is done to it.
#pragma once

#include "stars/Star.h"

namespace starsift {

/// Takes the stars out of an array and puts them back at the end of its life, also where an
/// exception ends that. What the array got meanwhile goes.
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

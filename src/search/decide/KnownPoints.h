// Points that a search has met before.
#pragma once

#include <string>
#include <unordered_set>

#include "core/Vector.h"
#include "numbers/QQ.h"

namespace starsift {

class KnownPoints {
 public:
  /// False if it was there.
  bool add(const Vector<QQ>& x);
  bool contains(const Vector<QQ>& x) const;

 private:
  /// Their texts.
  std::unordered_set<std::string> texts_;
};

/// The text of a vector of rationals, exact.
std::string pointText(const Vector<QQ>& x);

}  // namespace starsift

#include "search/decide/KnownPoints.h"

#include "core/VectorText.h"
#include "numbers/VectorQQ.h"

namespace starsift {

std::string pointText(const Vector<QQ>& x) {
  std::string text;
  appendText(text, x, 0);
  return text;
}

bool KnownPoints::add(const Vector<QQ>& x) {
  return texts_.insert(pointText(x)).second;
}

bool KnownPoints::contains(const Vector<QQ>& x) const {
  return !texts_.empty() && texts_.contains(pointText(x));
}

}  // namespace starsift

#include "system/ThreadLocale.h"

namespace starsift {

locale_t ThreadLocale::classic() {
  // Of glibc it is an object without memory of its own, so that this can't go wrong.
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

}  // namespace starsift

// The reader of LP files; what it accepts is written and read again.
#include "ModelTrip.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  readAndWrite(bytes, ModelFormat::lp);
}

}  // namespace starsift::fuzz

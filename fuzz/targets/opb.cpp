// The reader of OPB files; what it accepts is written and read again.
#include "ModelTrip.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  readAndWrite(bytes, ModelFormat::opb);
}

}  // namespace starsift::fuzz

// Packed texts.
#include "Target.h"
#include "models/text/ModelText.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  gunzip(bytes);
}

}  // namespace starsift::fuzz

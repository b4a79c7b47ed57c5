// The reader of names files: what it accepts is written and read as it was.
#include "Target.h"
#include "models/write/NamesFile.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  const NamesFile names = readNames(bytes);
  const std::string text = namesText(names);
  require(namesText(readNames(text)) == text, "names that were written are read as they were");
}

}  // namespace starsift::fuzz

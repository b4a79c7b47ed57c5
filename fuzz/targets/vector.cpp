// Vector text over both number types.
#include "TextPairs.h"
#include "numbers/VectorQQ.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  const auto read = [](auto& source, auto& vector) { readVector(source, vector); };
  if (takeChoice(bytes, 2) == 0)
    checkText<Vector<QQ>>(bytes, read);
  else
    checkText<Vector<long double>>(bytes, read);
}

}  // namespace starsift::fuzz

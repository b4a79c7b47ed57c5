// Matrix text over both number types.
#include "TextPairs.h"
#include "numbers/VectorQQ.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  const auto read = [](auto& source, auto& matrix) { readMatrix(source, matrix); };
  if (takeChoice(bytes, 2) == 0)
    checkText<Matrix<QQ>>(bytes, read);
  else
    checkText<Matrix<long double>>(bytes, read);
}

}  // namespace starsift::fuzz

#include "problem/FreedomDegree.h"

namespace starsift {

std::ostream& operator<<(std::ostream& stream, FreedomDegree kind) {
  return stream << static_cast<int>(kind);
}

std::istream& operator>>(std::istream& stream, FreedomDegree& kind) {
  int number = 0;
  if (!(stream >> number)) return stream;
  if (number < 0 || number > 3)
    stream.setstate(std::ios_base::failbit);
  else
    kind = static_cast<FreedomDegree>(number);
  return stream;
}

}  // namespace starsift

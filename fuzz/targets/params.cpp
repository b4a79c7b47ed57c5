// Parameter text over both number types: what a set writes, it reads again.
#include <sstream>

#include "Target.h"
#include "params/ExtendedParams.h"

namespace starsift::fuzz {

namespace {

template <class Set>
std::string textOf(const Set& set) {
  std::ostringstream stream;
  stream << set;
  return stream.str();
}

template <class T>
void readBack(std::string_view bytes) {
  ExtendedParams<T> set;
  std::istringstream stream{std::string(bytes)};
  stream >> set;
  const std::string text = textOf(set);
  // The copy also keeps what has no text: a parameter that was set to nothing.
  ExtendedParams<T> copy(set);
  require(textOf(copy) == text, "a copy has the same text");
  std::istringstream written(text);
  written >> copy;
  require(textOf(copy) == text, "a written set is a fixed point");
}

}  // namespace

void runTarget(std::string_view bytes) {
  const unsigned type = takeChoice(bytes, 2);
  type == 0 ? readBack<QQ>(bytes) : readBack<long double>(bytes);
}

}  // namespace starsift::fuzz

#include "core/Serializable.h"

#include <utility>

namespace starsift {

Serializable::Serializable(std::string separators, bool mergeSeparators, bool secondFlag)
    : separators_(std::move(separators)),
      mergeSeparators_(mergeSeparators),
      secondFlag_(secondFlag) {
  if (separators_.find(' ') == std::string::npos) separators_ += ' ';
}

}  // namespace starsift

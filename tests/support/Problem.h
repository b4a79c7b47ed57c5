// Problems and numbers from text.
#pragma once

#include <string_view>

#include "core/TextCursor.h"
#include "numbers/Conversion.h"
#include "problem/OptReader.h"

namespace starsift::test {

inline QQ q(std::string_view text) {
  return QQ::parse(text);
}

/// The problem of the text of a .opt file.
template <class T = QQ>
Vanu<T> problemFrom(std::string_view text) {
  Vanu<QQ> problem;
  TextCursor source(text);
  parseOpt(source, problem);
  problem.updateFixedTargets();
  Vanu<T> result;
  result.convertFrom(problem);
  return result;
}

}  // namespace starsift::test

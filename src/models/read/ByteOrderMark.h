// The byte order mark that some editors put before UTF-8 text.
#pragma once

#include <string_view>

#include "models/record/Model.h"

namespace starsift {

/// Removes it from the front of `text`, with a remark.
inline void takeByteOrderMark(std::string_view& text, Model& model) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  if (!text.starts_with(mark)) return;
  text.remove_prefix(mark.size());
  model.remarks.push_back({1, "the byte order mark at the start is ignored"});
}

}  // namespace starsift

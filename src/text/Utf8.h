// Text in UTF-8.
#pragma once

#include <cstddef>
#include <string_view>

namespace starsift {

/// The bytes of the UTF-8 character at the front of `text`, which isn't empty; 0 if there is none
/// (RFC 3629).
std::size_t utf8Length(std::string_view text);

bool isUtf8(std::string_view text);

}  // namespace starsift

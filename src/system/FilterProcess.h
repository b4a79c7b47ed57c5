// Another program as a filter: text in, text out.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace starsift {

/// What `program`, which is looked for in PATH, writes to its standard output for such arguments
/// and standard input; its messages go to this error stream. Nothing if it can't be started, or
/// ends with another status than 0.
std::optional<std::string> filtered(const std::string& program,
                                    const std::vector<std::string>& arguments,
                                    std::string_view input);

}  // namespace starsift

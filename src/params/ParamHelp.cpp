#include "params/ParamHelp.h"

#include <ostream>
#include <string>
#include <string_view>

#include "params/ParamTable.h"

namespace starsift {

namespace {

constexpr std::size_t lineLength = 80;
constexpr std::string_view indent = "      ";

/// Writes the words of a text in lines of at most lineLength characters; a longer word
/// gets a line of its own. Starts with a line feed.
void writeWrapped(std::ostream& stream, std::string_view text) {
  std::size_t length = lineLength;
  while (!text.empty()) {
    const std::size_t end = text.find(' ');
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (word.empty()) continue;
    if (length + 1 + word.size() > lineLength) {
      stream << '\n' << indent << word;
      length = indent.size() + word.size();
    } else {
      stream << ' ' << word;
      length += 1 + word.size();
    }
  }
  stream << '\n';
}

}  // namespace

void writeParamHelp(std::ostream& stream) {
  for (const ParamRow& row : paramTable()) {
    stream << "  --" << row.name << '=' << row.defaultText << "   (" << paramKindName(row.kind)
           << ')';
    writeWrapped(stream, row.help);
  }
}

}  // namespace starsift

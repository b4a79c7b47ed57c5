#include "params/Params.h"

#include <cctype>

#include "system/Failure.h"
#include "text/Text.h"
#include "text/TextCursor.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

/// White space within the line of a parameter text, which a line feed ends. A carriage
/// return before the line feed doesn't belong to an item.
constexpr std::string_view lineSpace = " \t";
constexpr std::string_view itemSpace = " \t\r";

}  // namespace

Params::Params() : Serializable(commaStyle()), commonCount_(registry_.added().dimension()) {}

Params::~Params() = default;

Params::Params(const Params& other) : Params() {
  *this = other;
}

Params& Params::operator=(const Params& other) {
  if (this == &other) return *this;
  Serializable::operator=(other);
  for (Index i = 1; i <= commonCount_; ++i)
    registry_.added()[i]->copyValue(*other.registry_.added()[i]);
  registry_.fillLike(other.registry_);
  stopping.copyValue(other.stopping);
  return *this;
}

std::ostream& Params::write(std::ostream& stream) const {
  std::string text;
  for (const auto& entry : table()) {
    if (entry.right->name().empty()) continue;
    TextWriter item;
    item << *entry.right;
    if (!item.view().empty()) text += item.str() + ' ';
  }
  return stream << trimRight(text);
}

std::istream& Params::read(std::istream& stream) {
  StreamCursor source(stream);
  skipWithComments(source, lineSpace);
  // lineSpace is skipped, so other white space here is the end of the line.
  if (source.peek() == endOfText || std::isspace(source.peek()) != 0) {
    registry_.empty();
    return stream;
  }
  ParamInfo item;
  do {
    stream >> item;
    ParamInfo* const parameter = registry_.find(item.name());
    if (parameter == nullptr) fail("Malformed parameter: " + item.name() + "=" + item.text());
    parameter->setTextSilently(item.text());
    skipWithComments(source, itemSpace);
  } while (source.peek() != endOfText && source.peek() != '\n');
  return stream;
}

}  // namespace starsift

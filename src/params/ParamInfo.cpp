#include "params/ParamInfo.h"

#include <cctype>

#include "system/Failure.h"
#include "text/TextCursor.h"

namespace starsift {

namespace {

/// Removes and returns the characters up to white space or the end of the stream.
std::string takeToken(StreamCursor& source) {
  std::string token;
  for (int c = source.peek(); c != endOfText && std::isspace(c) == 0; c = source.peek()) {
    token += static_cast<char>(c);
    source.take();
  }
  return token;
}

}  // namespace

ParamInfo::ParamInfo(const ParamRow& row)
    : Serializable(commaStyle()),
      name_(row.name),
      row_(&row),
      text_(std::string(row.defaultText)) {}

std::ostream& ParamInfo::write(std::ostream& stream) const {
  const std::string value = text();
  if (!value.empty()) stream << "--" << name_ << '=' << value;
  return stream;
}

std::istream& ParamInfo::read(std::istream& stream) {
  StreamCursor source(stream);
  skipWithComments(source);
  for (int dash = 1; dash <= 2; ++dash)
    if (source.peek() != endOfText) source.take();
  const std::string token = takeToken(source);
  const auto equals = token.find('=');
  if (equals == std::string::npos) fail("Malformed parameter: " + token);
  name_ = token.substr(0, equals);
  setTextSilently(token.substr(equals + 1));
  return stream;
}

void ParamInfo::setTextSilently(const std::string& text) {
  text_.set(text);
  update();
}

}  // namespace starsift

// JSON texts (RFC 8259) piece by piece.
#pragma once

#include <string>
#include <string_view>

namespace starsift {

/// Writes one JSON value; commas and indentation come by themselves. Inside an object each value is
/// preceded by its key.
class JsonText {
 public:
  JsonText& beginObject() { return begin('{'); }
  JsonText& endObject() { return end('}'); }
  JsonText& beginArray() { return begin('['); }
  JsonText& endArray() { return end(']'); }
  JsonText& key(std::string_view name);

  /// Bytes of a text that isn't UTF-8 are taken as Latin-1.
  JsonText& value(std::string_view text);
  JsonText& value(const char* text) { return value(std::string_view(text)); }
  JsonText& value(std::size_t number);
  JsonText& value(bool truth);

  const std::string& text() const { return text_; }

 private:
  JsonText& begin(char bracket);
  JsonText& end(char bracket);
  void separate();
  void newLine();

  std::string text_;
  std::size_t depth_ = 0;
  bool isFirst_ = true;
  bool followsKey_ = false;
};

}  // namespace starsift

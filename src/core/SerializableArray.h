// The general list form "[ a,b,c ]": any element that streams, separated by the
// characters of the delimiter setting and escaped by a backslash.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/ConversionArray.h"
#include "text/Serializable.h"
#include "text/Text.h"
#include "text/TextCursor.h"
#include "text/TextStreams.h"

namespace starsift {

namespace listform {

/// The characters that are escaped in an item's text: the separators from the second on
/// and the terminating zero after the last. The first separator, which is the one that is
/// written, is not escaped: files hold such texts, so an item that contains it is read
/// back as two items.
inline std::string escapedCharacters(const std::string& separators) {
  return separators.substr(1) + '\0';
}

inline std::string escaped(std::string item, const std::string& separators) {
  for (const char c : escapedCharacters(separators))
    item = replaceAll(item, std::string(1, c), std::string{'\\', c});
  return item;
}

inline std::string unescaped(std::string item, const std::string& separators) {
  for (const char c : escapedCharacters(separators))
    item = replaceAll(item, std::string{'\\', c}, std::string(1, c));
  return item;
}

/// Reads the texts of the items of one list. `merge`: separators are skipped in
/// runs, together with comments, and do not end an item: its characters are joined up to "]".
template <class Source>
std::vector<std::string> readItems(Source& source, const std::string& separators, bool merge) {
  skipWhiteSpace(source);
  if (source.peek() != '[') fail("SerializableArray: no start found");
  source.take();
  std::vector<std::string> items;
  std::string item;
  bool first = true;
  bool afterBackslash = false;
  const auto finish = [&] {
    if (!first || !item.empty()) items.push_back(unescaped(item, separators));
    first = false;
    item.clear();
  };
  while (true) {
    if (!afterBackslash) {
      bool separated = false;
      if (merge) {
        skipWithComments(source, separators);
      } else if (source.peek() != endOfText &&
                 separators.find(static_cast<char>(source.peek())) != std::string::npos) {
        source.take();
        separated = true;
      }
      if (source.peek() == ']' && item.empty()) break;
      if (source.peek() == ']' || separated) {
        finish();
        continue;
      }
    }
    if (source.peek() == endOfText) fail("SerializableArray: no end found");
    afterBackslash = source.peek() == '\\';
    item += static_cast<char>(source.peek());
    source.take();
  }
  source.take();
  return items;
}

/// Parses an item; if the text can't be read the result is a fresh item, never one that
/// an earlier list left in storage.
template <class T>
void parseItem(const std::string& text, T& item) {
  item = T();
  TextReader stream(text);
  stream >> item;
}

/// A string item is its text: stream extraction would stop at the first blank.
inline void parseItem(const std::string& text, std::string& item) {
  item = text;
}

}  // namespace listform

/// An array with a text form.
template <class T>
class SerializableArray : public ConversionArray<T>, public Serializable {
 public:
  SerializableArray() : SerializableArray(commaStyle()) {}
  explicit SerializableArray(const ListStyle& style) : Serializable(style) {}
  SerializableArray(std::string separators, bool mergeSeparators, bool secondFlag)
      : Serializable(listStyle(std::move(separators), mergeSeparators, secondFlag)) {}

  /// As ConversionArray; copies the delimiter setting too.
  template <class U>
  void convertFrom(const SerializableArray<U>& source, bool check) {
    ConversionArray<T>::convertFrom(source, check);
    Serializable::operator=(source);
  }

  /// Writes "[ a,b,c ]"; the outer blanks are line feeds if the line feed is a separator.
  std::ostream& write(std::ostream& stream) const override {
    const char frame = separators().find('\n') == std::string::npos ? ' ' : '\n';
    stream << '[' << frame;
    for (Index i = 1; i <= this->dimension(); ++i) {
      TextWriter text;
      text << (*this)[i];
      stream << listform::escaped(text.str(), separators());
      if (i < this->dimension()) stream << separators().front();
    }
    if (this->dimension() != 0) stream << frame;
    return stream << ']';
  }

  /// Reads the form written by write(); text that doesn't start with "[" is fatal.
  std::istream& read(std::istream& stream) override {
    StreamCursor source(stream);
    const auto items = listform::readItems(source, separators(), mergeSeparators());
    this->resize(0, false);
    this->resize(static_cast<Index>(items.size()), false);
    for (Index i = 1; i <= this->dimension(); ++i)
      listform::parseItem(items[static_cast<std::size_t>(i - 1)], (*this)[i]);
    return stream;
  }
};

}  // namespace starsift

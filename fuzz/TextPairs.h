// Laws of a text form, for the targets that read vectors and matrices.
#pragma once

#include <sstream>

#include "Target.h"
#include "text/TextCursor.h"

namespace starsift::fuzz {

/// The texts of all objects in a row that `read(source, object)` reads from the
/// source, and how that ended.
template <class Object, class Source, class Read>
std::string objectsOf(Source& source, Read read) {
  std::ostringstream texts;
  texts.precision(18);
  texts << outcomeOf([&] {
    for (;;) {
      Object object;
      read(source, object);
      texts << object << '\n';
      if (source.peek() == endOfText) return std::string("end");
      source.take();
    }
  });
  return texts.str();
}

/// The bytes read the same from memory and from a stream.
template <class Object, class Read>
void readBothWays(std::string_view bytes, Read read) {
  TextCursor memory(bytes);
  std::istringstream stream{std::string(bytes)};
  StreamCursor cursor(stream);
  require(objectsOf<Object>(memory, read) == objectsOf<Object>(cursor, read),
          "a stream gives what memory gives");
}

/// The text that shows all of an object, also over long double.
template <class Object>
std::string wholeText(const Object& object) {
  std::ostringstream text;
  text.precision(21);
  text << object;
  return text.str();
}

/// The first object of the bytes reads back from its own text.
template <class Object, class Read>
void readBack(std::string_view bytes, Read read) {
  Object object;
  TextCursor source(bytes);
  read(source, object);
  const std::string written = wholeText(object);
  Object again;
  TextCursor writtenSource(written);
  read(writtenSource, again);
  require(wholeText(again) == written, "a written object reads back");
  require(writtenSource.atEnd(), "a written object is one object");
}

/// Both laws.
template <class Object, class Read>
void checkText(std::string_view bytes, Read read) {
  readBothWays<Object>(bytes, read);
  readBack<Object>(bytes, read);
}

}  // namespace starsift::fuzz

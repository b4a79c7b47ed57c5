// Text forms in tests: what an object writes, and what a text reads as.
#pragma once

#include <sstream>
#include <string>

namespace starsift::test {

/// What a stream nobody set up shows of the object.
template <class Object>
std::string textOf(const Object& object) {
  std::ostringstream stream;
  stream << object;
  return stream.str();
}

/// An object read from the text by the stream operator.
template <class Object>
Object readFrom(const std::string& text) {
  std::istringstream stream(text);
  Object object;
  stream >> object;
  return object;
}

/// What reading an object leaves in the stream.
template <class Object>
std::string restBehind(const std::string& text) {
  std::istringstream stream(text);
  Object object;
  stream >> object;
  std::ostringstream rest;
  if (stream.peek() != std::istringstream::traits_type::eof()) rest << stream.rdbuf();
  return rest.str();
}

}  // namespace starsift::test

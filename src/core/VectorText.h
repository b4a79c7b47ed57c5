// The text form of vectors, "[ a b c ]": white space separates, comments may stand
// wherever it may, and "inf" is a component of every number type.
#pragma once

#include <array>
#include <vector>

#include "core/Vector.h"

namespace starsift {

/// Reads the components of one vector behind each other into `components`, which
/// is emptied first. `readNumber(source, value)` reads one number token and is
/// false when there is none. False when the source doesn't stand at "[" behind
/// white space and comments: nothing but those is consumed then.
///
/// Fatal: "Vector: bad input" (no number), "Vector: bad input2" and "...3" (an
/// "i" that doesn't begin "inf").
template <class T, class Source, class ReadNumber>
bool readComponents(Source& source, std::vector<T>& components, ReadNumber readNumber) {
  components.clear();
  skipWithComments(source);
  if (source.peek() != '[') return false;
  source.take();
  skipWithComments(source);
  while (source.peek() != ']') {
    // The sign belongs to the vector: the number behind it may have its own.
    const bool negative = source.peek() == '-';
    if (negative) source.take();
    T& value = components.emplace_back();
    if (source.peek() == 'i') {
      source.take();
      if (source.peek() != 'n') fail("Vector: bad input2");
      source.take();
      if (source.peek() != 'f') fail("Vector: bad input3");
      source.take();
      value = NumberTraits<T>::infinity();
    } else if (!readNumber(source, value)) {
      fail("Vector: bad input");
    }
    if (negative) value = -value;
    skipWithComments(source);
  }
  source.take();
  return true;
}

/// Reads a vector with the number token of T. Leaves `vector` empty where the
/// source doesn't stand at "[".
template <class T, class Source>
void readVector(Source& source, Vector<T>& vector) {
  std::vector<T> components;
  readComponents(source, components,
                 [](Source& from, T& value) { return NumberTraits<T>::read(from, value); });
  vector.resize(0, false);
  vector.resize(static_cast<Index>(components.size()), false);
  std::move(components.begin(), components.end(), vector.begin());
}

/// Appends what a stream with the precision `digits` would show of the vector.
template <class T>
void appendText(std::string& out, const Vector<T>& vector, int digits) {
  out += "[ ";
  // Nearly all components are short integers: they are gathered here, so that the
  // string grows block by block.
  std::array<char, 512> block;
  char* const full = block.data() + block.size() - (integerTextSize + 1);
  char* position = block.data();
  const auto flush = [&] {
    out.append(block.data(), position);
    position = block.data();
  };
  for (const T& component : vector) {
    std::int64_t integer = 0;
    if (NumberTraits<T>::writtenAsInteger(component, digits, integer)) {
      position = writeInteger(position, integer);
      *position++ = ' ';
      if (position > full) flush();
    } else {
      flush();
      NumberTraits<T>::append(out, component, digits);
      out += ' ';
    }
  }
  flush();
  out += ']';
}

extern template void readVector(TextCursor&, Vector<long double>&);
extern template void readVector(StreamCursor&, Vector<long double>&);
extern template void appendText(std::string&, const Vector<long double>&, int);

}  // namespace starsift

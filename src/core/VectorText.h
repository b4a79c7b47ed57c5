// The text form of vectors, "[ a b c ]": white space separates, comments may stand
// wherever white space may, and "inf" is a component of every number type.
#pragma once

#include <array>
#include <vector>

#include "core/Vector.h"

namespace starsift {

namespace vectortext {

/// Reads integers as long as each fits T and ends at a blank: nearly all components
/// are such integers. The source then stands at the first token that is something else,
/// possibly after a blank.
template <class T>
void takeIntegers(TextCursor& source, std::vector<T>& components) {
  const std::string_view text = source.rest();
  const char* const end = text.data() + text.size();
  const char* position = text.data();
  while (true) {
    const bool negative = position != end && *position == '-';
    const char* const first = position + (negative ? 1 : 0);
    const char* next = first;
    std::int64_t integer = 0;
    // A further digit might not fit; it ends the loop and fails the test for a blank.
    for (; next != end && next - first < NumberTraits<T>::wholeDigits; ++next) {
      const unsigned digit = static_cast<unsigned char>(*next) - static_cast<unsigned>('0');
      if (digit > 9) break;
      integer = 10 * integer + digit;
    }
    const auto count = next - first;
    if (count == 0 || next == end || *next != ' ') break;
    // A leading zero may introduce a base other than ten, and -0 may differ from 0.
    if (*first == '0' && (count > 1 || negative)) break;
    components.push_back(static_cast<T>(negative ? -integer : integer));
    position = next + 1;
  }
  source.advance(static_cast<std::size_t>(position - text.data()));
}

/// A stream has no text to look ahead in.
template <class T>
void takeIntegers(StreamCursor& /*source*/, std::vector<T>& /*components*/) {}

/// Advances to the next component that isn't a plain integer, or to the "]".
template <class T, class Source>
void takeToNext(Source& source, std::vector<T>& components) {
  skipWithComments(source);
  takeIntegers(source, components);
  skipWithComments(source);
}

}  // namespace vectortext

/// Reads the components of one vector in sequence into `components`, which is cleared
/// first. `readNumber(source, value)` reads one number token and returns false if there
/// is none. False if the source doesn't stand at "[" after white space and comments:
/// only white space and comments are consumed then.
///
/// Fatal: "Vector: bad input" (no number), "Vector: bad input2" and "...3" (an
/// "i" that doesn't begin "inf").
template <class T, class Source, class ReadNumber>
bool readComponents(Source& source, std::vector<T>& components, ReadNumber readNumber) {
  components.clear();
  skipWithComments(source);
  if (source.peek() != '[') return false;
  source.take();
  vectortext::takeToNext(source, components);
  while (source.peek() != ']') {
    // The sign belongs to the vector: the number after it may have its own.
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
    vectortext::takeToNext(source, components);
  }
  source.take();
  return true;
}

/// Reads a vector with the number token of T. Leaves `vector` empty if the source
/// doesn't stand at "[".
template <class T, class Source>
void readVector(Source& source, Vector<T>& vector) {
  std::vector<T> components;
  readComponents(source, components,
                 [](Source& from, T& value) { return NumberTraits<T>::read(from, value); });
  vector.resize(0, false);
  vector.resize(static_cast<Index>(components.size()), false);
  std::move(components.begin(), components.end(), vector.begin());
}

/// Appends the text that a stream with the precision `digits` would write for the vector.
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

// A long text that is composed by one thread and handed on by another.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace starsift {

/// Appends a piece of the text, about a megabyte; false if the text ends with it.
using ComposePiece = std::function<bool(std::string&)>;

/// Hands the pieces of a text to `write`, which the calling thread runs, while a second thread
/// composes the next one. Throws what the two throw.
void writeComposed(const ComposePiece& compose, const std::function<void(std::string_view)>& write);

/// The same for the texts of some elements, which `append` composes one by one.
template <class Elements, class Append>
void writeElements(const Elements& elements, const Append& append,
                   const std::function<void(std::string_view)>& write) {
  constexpr std::size_t pieceSize = std::size_t{1} << 20U;
  auto next = elements.begin();
  const auto compose = [&](std::string& piece) {
    while (next != elements.end() && piece.size() < pieceSize) append(piece, *next++);
    return next != elements.end();
  };
  writeComposed(compose, write);
}

}  // namespace starsift

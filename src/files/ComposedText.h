// A long text that is composed by one thread and handed on by another.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace starsift {

/// A piece takes much longer to compose than to hand over.
constexpr std::size_t pieceLength = std::size_t{1} << 17U;
/// Pieces in memory.
constexpr std::size_t piecesAhead = 4;

/// Appends a piece of the text, not much longer than pieceLength; false if the text ends with it.
using ComposePiece = std::function<bool(std::string&)>;

/// Hands the pieces of a text to `write`, which the calling thread runs, while a second thread
/// composes the next ones; without one where the machine has a single core or grants no thread.
/// Throws what the two throw.
void writeComposed(const ComposePiece& compose, const std::function<void(std::string_view)>& write);

/// The same for the texts of elements in a vector, which `append` composes one by one. `prefetch`
/// is called for an element some elements before.
template <class Element, class Prefetch, class Append>
void writeElements(const std::vector<Element>& elements, const Prefetch& prefetch,
                   const Append& append, const std::function<void(std::string_view)>& write) {
  constexpr std::size_t lookahead = 8;
  std::size_t next = 0;
  const auto compose = [&](std::string& piece) {
    for (; next < elements.size() && piece.size() < pieceLength; ++next) {
      if (next + lookahead < elements.size()) prefetch(elements[next + lookahead]);
      append(piece, elements[next]);
    }
    return next < elements.size();
  };
  writeComposed(compose, write);
}

}  // namespace starsift

#include "files/ComposedText.h"

#include <utility>

#include "system/HelperThreads.h"

namespace starsift {

void writeComposed(const ComposePiece& compose,
                   const std::function<void(std::string_view)>& write) {
  std::string piece;
  std::string next;
  bool isLast = !compose(piece);
  // In memory of this thread.
  if (!isLast) next.reserve(piece.capacity());
  while (!isLast) {
    next.clear();
    runBoth([&] { isLast = !compose(next); }, [&] { write(piece); });
    std::swap(piece, next);
  }
  write(piece);
}

}  // namespace starsift

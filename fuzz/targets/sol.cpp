// The reader of solution files over both number types. What it took must be read
// back from what the writer makes of it.
#include "Target.h"
#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "numbers/QQ.h"

namespace starsift::fuzz {

namespace {

/// What the command makes of a line that the writer wrote.
std::string rewritten(const std::string& line, Index dimension) {
  Star<QQ> star;
  TextCursor source(line);
  require(readStar(star, source), "a written record is complete");
  require(source.atEnd(), "a written record is one record");
  require(star.dimension() == dimension, "a written record has all of x");
  return starText(star);
}

template <class T>
void readAll(std::string_view bytes) {
  TextCursor source(bytes);
  for (skipWithComments(source); !source.atEnd(); skipWithComments(source)) {
    Star<T> star;
    const std::size_t before = source.rest().size();
    if (readStar(star, source) && star.dimension() != 0) {
      const std::string exact = rewritten(starText(star), star.dimension());
      require(rewritten(exact, star.dimension()) == exact, "the exact form is a fixed point");
      if (NumberTraits<T>::exact) require(exact == starText(star), "and a star's own text");
    }
    if (source.rest().size() == before) source.take();
  }
}

}  // namespace

void runTarget(std::string_view bytes) {
  const unsigned type = takeChoice(bytes, 2);
  type == 0 ? readAll<QQ>(bytes) : readAll<long double>(bytes);
}

}  // namespace starsift::fuzz

#include "files/SolReader.h"

#include <algorithm>
#include <optional>
#include <type_traits>
#include <utility>

#include "files/MemoryNeed.h"
#include "files/RecordReader.h"
#include "numbers/QQ.h"
#include "stars/StarCheck.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Completes bare records; the problem is prepared for checks at the first one. Number as in
/// RecordReader: records with infinite components, which only the arithmetic of Number can
/// check, throw PrecisionException if T is another type.
template <class T, class Number>
class BareRecords {
 public:
  explicit BareRecords(const Vanu<T>& problem) : problem_(problem) {}

  void complete(Star<T>& star) {
    if (!std::is_same_v<T, Number> &&
        std::any_of(star.begin(), star.end(), NumberTraits<T>::isInfinite))
      throw PrecisionException(checkLossText);
    if (!checker_) checker_.emplace(problem_);
    // A star that fails stays unchanged: the check of all stars removes it later.
    static_cast<void>(checker_->check(star));
  }

 private:
  const Vanu<T>& problem_;
  std::optional<StarChecker<T>> checker_;
};

/// Hands the stars of a text to `take` until that returns false.
template <class T, class Number, class Take>
void readEach(std::string_view text, const Vanu<T>& problem, const Take& take) {
  TextCursor source(text);
  RecordReader<T, Number> reader;
  BareRecords<T, Number> bareRecords(problem);
  for (skipWithComments(source); !source.atEnd(); skipWithComments(source)) {
    Star<T> star;
    const std::size_t before = source.rest().size();
    if (!reader.read(star, source)) bareRecords.complete(star);
    // Text that isn't a record and was not consumed would be read again for ever.
    if (source.rest().size() == before) takeLine(source);
    if (star.dimension() != 0 && !take(std::move(star))) return;
  }
}

/// See readStars and readStarsExactly.
template <class T, class Number>
bool readAll(std::string_view text, const Vanu<T>& problem, Array<Star<T>>& stars, bool peek) {
  bool any = false;
  Array<Star<T>> found;
  readEach<T, Number>(text, problem, [&](Star<T>&& star) {
    any = true;
    if (!peek) append(found, std::move(star));
    return !peek;
  });
  appendStars(stars, std::move(found));
  return any;
}

/// The same for the text of a file, if there is one.
template <class T, class Number>
bool readFile(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars, bool peek) {
  const std::optional<InputText> text = readSolText(path);
  return text && readAll<T, Number>(text->view(), problem, stars, peek);
}

}  // namespace

std::optional<InputText> readSolText(const std::string& path) {
  try {
    const FilePlace place(path);
    if (place.isReachable()) requireMemoryFor(place);
    return readFileText(place);
  } catch (const ReadException&) {
    fail("Could not read sol file: " + path);
  } catch (const LinkException& link) {
    fail(link.message());
  }
}

template <class T>
bool readStar(Star<T>& star, TextCursor& source) {
  return RecordReader<T, T>().read(star, source);
}

template <class T>
bool readStars(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars, bool peek) {
  return readFile<T, T>(path, problem, stars, peek);
}

template <class T>
bool readStarsExactly(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars,
                      bool peek) {
  return readFile<T, QQ>(path, problem, stars, peek);
}

PackedStars readPackedStars(const std::string& path, const Vanu<QQ>& problem) {
  PackedStars stars;
  const std::optional<InputText> text = readSolText(path);
  if (!text) return stars;
  readEach<QQ, QQ>(text->view(), problem, [&stars](const Star<QQ>& star) {
    stars.append(star);
    return true;
  });
  return stars;
}

Array<Star<QQ>> readStarsOf(const std::string& text, const Vanu<QQ>& problem) {
  Array<Star<QQ>> stars;
  readAll<QQ, QQ>(text, problem, stars, false);
  return stars;
}

template bool readStar(Star<long double>&, TextCursor&);
template bool readStar(Star<QQ>&, TextCursor&);
template bool readStars(const std::string&, const Vanu<long double>&, Array<Star<long double>>&,
                        bool);
template bool readStars(const std::string&, const Vanu<QQ>&, Array<Star<QQ>>&, bool);
template bool readStarsExactly(const std::string&, const Vanu<long double>&,
                               Array<Star<long double>>&, bool);
template bool readStarsExactly(const std::string&, const Vanu<QQ>&, Array<Star<QQ>>&, bool);

}  // namespace starsift

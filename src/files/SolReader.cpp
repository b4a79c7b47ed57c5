#include "files/SolReader.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/VectorText.h"
#include "numbers/Conversion.h"
#include "numbers/QQText.h"
#include "stars/StarCheck.h"
#include "system/Exceptions.h"
#include "system/Failure.h"
#include "text/InputText.h"
#include "text/Text.h"

namespace starsift {

namespace {

/// The number token of a record: as in a problem, but with exponents, since the
/// writer of a long double star uses them.
bool readRecordNumber(TextCursor& source, QQ& value) {
  return readToken(source, value, TokenKind::record);
}

bool readRecordNumber(TextCursor& source, long double& value) {
  return NumberTraits<long double>::read(source, value);
}

/// Returns the rest of the line; the source moves past its line feed.
std::string_view takeLine(TextCursor& source) {
  const std::string_view line = source.rest().substr(0, source.rest().find('\n'));
  source.advance(std::min(line.size() + 1, source.rest().size()));
  return line;
}

/// Reads the fields of records, their numbers as tokens of Number, each of which T
/// must hold. Keeps its scratch storage between records.
template <class T, class Number>
class RecordReader {
 public:
  /// See readStar.
  bool read(Star<T>& star, TextCursor& source) {
    try {
      return readFields(star, source);
    } catch (const PrecisionException&) {
      throw;  // The record is well formed as far as it was read.
    } catch (const GeneralException&) {
      // A record that can't be read is no star; the rest of its line is skipped.
      star.clear();
      takeLine(source);
      return true;
    }
  }

 private:
  bool readFields(Star<T>& star, TextCursor& source) {
    skipWithComments(source);
    readNumbers(star, source);
    if (!takeBar(source)) return false;
    star.targetNorm = readNumber(source);
    takeBar(source);
    readNumbers(star.targetValues, source);
    takeBar(source);
    star.slackNorm = readNumber(source);
    takeBar(source);
    star.time = readTime(source);
    takeBarBehindComments(source);
    readTexts(star, source);
    return true;
  }

  void readNumbers(Vector<T>& numbers, TextCursor& source) {
    readComponents(source, components_,
                   [](TextCursor& from, Number& value) { return readRecordNumber(from, value); });
    numbers.resize(static_cast<Index>(components_.size()), false);
    std::transform(components_.begin(), components_.end(), numbers.begin(), converted);
  }

  static T readNumber(TextCursor& source) {
    skipWithComments(source);
    Number value = Number();
    if (!readRecordNumber(source, value)) throw ReadException("Star: bad number");
    return converted(value);
  }

  /// The value, moved if the types agree.
  static T converted(Number& value) {
    if constexpr (std::is_same_v<T, Number>)
      return std::move(value);
    else
      return NumberConversion<T, Number>::convert(value);
  }

  /// Consumes white space and a bar, or nothing if there is no bar.
  static bool takeBar(TextCursor& source) {
    TextCursor ahead = source;
    skipWhiteSpace(ahead);
    return takeBarAt(ahead, source);
  }

  static bool takeBarBehindComments(TextCursor& source) {
    TextCursor ahead = source;
    skipWithComments(ahead);
    return takeBarAt(ahead, source);
  }

  static bool takeBarAt(TextCursor& ahead, TextCursor& source) {
    if (ahead.peek() != '|') return false;
    ahead.take();
    source = ahead;
    return true;
  }

  /// One token up to white space or a bar.
  static std::int64_t readTime(TextCursor& source) {
    skipWithComments(source);
    const std::string_view rest = source.rest();
    const std::string_view token = rest.substr(0, rest.find_first_of(" \t\r\n|"));
    source.advance(token.size());
    const bool plus = token.starts_with('+') && !token.starts_with("+-");
    std::int64_t time = 0;
    const char* const end = token.data() + token.size();
    const auto result = std::from_chars(token.data() + (plus ? 1 : 0), end, time);
    if (result.ec != std::errc() || result.ptr != end) throw ReadException("Star: bad time");
    return std::max(time, unknownTime);
  }

  /// Fields 6 and 7: the rest of the line, split at its bars.
  static void readTexts(Star<T>& star, TextCursor& source) {
    const std::string_view line = withoutComments(takeLine(source));
    const std::size_t bar = std::min(line.find('|'), line.size());
    star.paramsText = trim(line.substr(0, bar));
    const std::string_view rest = line.substr(std::min(bar + 1, line.size()));
    // With a third text the line has no version; an empty one at the end is none.
    if (!rest.empty() && rest.find('|') >= rest.size() - 1)
      star.versionText = trim(rest.substr(0, rest.find('|')));
  }

  /// Removes blanks and comments at the head of a line. A comment that doesn't end
  /// on the line is text.
  static std::string_view withoutComments(std::string_view line) {
    while (true) {
      line.remove_prefix(std::min(line.find_first_not_of(" \t\r"), line.size()));
      if (line.starts_with("//")) return {};
      const std::size_t end = line.starts_with("/*") ? line.find("*/", 2) : std::string_view::npos;
      if (end == std::string_view::npos) return line;
      line.remove_prefix(end + 2);
    }
  }

  std::vector<Number> components_;
};

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

/// The text of the file, nothing without a regular file. A file that can't be read is fatal: it
/// would be rewritten without its stars.
std::optional<InputText> solText(const std::string& path) {
  try {
    return readFileText(FilePlace(path));
  } catch (const ReadException&) {
    fail("Could not read sol file: " + path);
  } catch (const LinkException& link) {
    fail(link.message());
  }
}

/// See readStars and readStarsExactly.
template <class T, class Number>
bool readAll(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars, bool peek) {
  const std::optional<InputText> text = solText(path);
  if (!text) return false;
  TextCursor source(text->view());
  RecordReader<T, Number> reader;
  BareRecords<T, Number> bareRecords(problem);
  Array<Star<T>> found;
  for (skipWithComments(source); !source.atEnd(); skipWithComments(source)) {
    Star<T> star;
    const std::size_t before = source.rest().size();
    if (!reader.read(star, source)) bareRecords.complete(star);
    // Text that isn't a record and was not consumed would be read again for ever.
    if (source.rest().size() == before) takeLine(source);
    if (star.dimension() == 0) continue;
    if (peek) return true;
    append(found, std::move(star));
  }
  const bool any = found.isSet();
  appendStars(stars, std::move(found));
  return any;
}

}  // namespace

template <class T>
bool readStar(Star<T>& star, TextCursor& source) {
  return RecordReader<T, T>().read(star, source);
}

template <class T>
bool readStars(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars, bool peek) {
  return readAll<T, T>(path, problem, stars, peek);
}

template <class T>
bool readStarsExactly(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars,
                      bool peek) {
  return readAll<T, QQ>(path, problem, stars, peek);
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

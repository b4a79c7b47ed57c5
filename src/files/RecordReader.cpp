#include "files/RecordReader.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>

#include "core/VectorText.h"
#include "numbers/Conversion.h"
#include "numbers/QQText.h"
#include "system/Exceptions.h"
#include "text/IntegerText.h"
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

/// The value, moved if the types agree.
template <class T, class Number>
T converted(Number& value) {
  if constexpr (std::is_same_v<T, Number>)
    return std::move(value);
  else
    return NumberConversion<T, Number>::convert(value);
}

template <class T, class Number>
T readNumber(TextCursor& source) {
  skipWithComments(source);
  Number value = Number();
  if (!readRecordNumber(source, value)) throw ReadException("Star: bad number");
  return converted<T>(value);
}

bool takeBarAt(TextCursor& ahead, TextCursor& source) {
  if (ahead.peek() != '|') return false;
  ahead.take();
  source = ahead;
  return true;
}

/// Consumes white space and a bar, or nothing if there is no bar.
bool takeBar(TextCursor& source) {
  TextCursor ahead = source;
  skipWhiteSpace(ahead);
  return takeBarAt(ahead, source);
}

bool takeBarBehindComments(TextCursor& source) {
  TextCursor ahead = source;
  skipWithComments(ahead);
  return takeBarAt(ahead, source);
}

/// One token up to white space or a bar.
std::int64_t readTime(TextCursor& source) {
  skipWithComments(source);
  const std::string_view rest = source.rest();
  const std::string_view token = rest.substr(0, rest.find_first_of(" \t\r\n|"));
  source.advance(token.size());
  const bool plus = token.starts_with('+') && !token.starts_with("+-");
  const auto time = parseInteger<std::int64_t>(token.substr(plus ? 1 : 0));
  if (!time) throw ReadException("Star: bad time");
  return std::max(*time, unknownTime);
}

/// Removes blanks and comments at the head of a line. A comment that doesn't end
/// on the line is text.
std::string_view withoutComments(std::string_view line) {
  while (true) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t\r"), line.size()));
    if (line.starts_with("//")) return {};
    const std::size_t end = line.starts_with("/*") ? line.find("*/", 2) : std::string_view::npos;
    if (end == std::string_view::npos) return line;
    line.remove_prefix(end + 2);
  }
}

}  // namespace

std::string_view takeLine(TextCursor& source) {
  const std::string_view line = source.rest().substr(0, source.rest().find('\n'));
  source.advance(std::min(line.size() + 1, source.rest().size()));
  return line;
}

RecordTexts readRecordTexts(TextCursor& source) {
  RecordTexts texts;
  const std::string_view line = withoutComments(takeLine(source));
  const std::size_t bar = std::min(line.find('|'), line.size());
  texts.params = trimmed(line.substr(0, bar));
  const std::string_view rest = line.substr(std::min(bar + 1, line.size()));
  // With a third text the line has no version; an empty one at the end is none.
  if (!rest.empty() && rest.find('|') >= rest.size() - 1)
    texts.version = trimmed(rest.substr(0, rest.find('|')));
  return texts;
}

template <class T, class Number>
bool RecordReader<T, Number>::read(Star<T>& star, TextCursor& source) {
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

template <class T, class Number>
bool RecordReader<T, Number>::readFields(Star<T>& star, TextCursor& source) {
  skipWithComments(source);
  readNumbers(star, source);
  if (!takeBar(source)) return false;
  star.targetNorm = readNumber<T, Number>(source);
  takeBar(source);
  readNumbers(star.targetValues, source);
  takeBar(source);
  star.slackNorm = readNumber<T, Number>(source);
  takeBar(source);
  star.time = readTime(source);
  takeBarBehindComments(source);
  const RecordTexts texts = readRecordTexts(source);
  star.paramsText = texts.params;
  star.versionText = texts.version;
  return true;
}

template <class T, class Number>
void RecordReader<T, Number>::readNumbers(Vector<T>& numbers, TextCursor& source) {
  readComponents(source, components_,
                 [](TextCursor& from, Number& value) { return readRecordNumber(from, value); });
  numbers.resize(static_cast<Index>(components_.size()), false);
  std::transform(components_.begin(), components_.end(), numbers.begin(), converted<T, Number>);
}

template class RecordReader<long double, long double>;
template class RecordReader<long double, QQ>;
template class RecordReader<QQ, QQ>;

}  // namespace starsift

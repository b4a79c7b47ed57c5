#include "params/ParamArguments.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <stdexcept>
#include <string_view>

#include "numbers/QQ.h"
#include "system/Failure.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

constexpr std::string_view dashes = "--";

/// The text without a single leading plus sign, which a stream accepts and
/// std::from_chars rejects.
std::string_view withoutPlus(std::string_view text) {
  const bool plus = text.size() > 1 && text.front() == '+' && text[1] != '-';
  return plus ? text.substr(1) : text;
}

/// True if the whole text is a value of T.
template <class T>
bool isWhole(std::string_view text) {
  T value = T();
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  return result.ec == std::errc() && result.ptr == end;
}

bool startsLikeNumber(std::string_view text) {
  const auto first = text.find_first_not_of("+-");
  return first <= 1 && std::isdigit(static_cast<unsigned char>(text[first])) != 0;
}

/// True if QQ::parse accepts the text. Some malformed numbers are fatal there, with a
/// report of their own.
bool isNumber(std::string_view text) {
  if (!startsLikeNumber(text)) return false;
  try {
    QQ::parse(text);
    return true;
  } catch (const std::invalid_argument&) {
    // Something else than digits where QQ::parse expects them.
    return false;
  }
}

bool isValueOf(ParamKind kind, std::string_view text) {
  if (text == "inf" || text == "-inf") return true;
  switch (kind) {
    case ParamKind::boolean:
      return text == "0" || text == "1";
    case ParamKind::integer:
    case ParamKind::guardedInteger:
      return isWhole<long>(withoutPlus(text));
    case ParamKind::natural:
      return isWhole<unsigned long>(withoutPlus(text));
    case ParamKind::real:
      return isWhole<float>(withoutPlus(text));
    case ParamKind::number:
      return isNumber(text);
  }
  return false;
}

/// True if the table has a row with this name, and the text is a value of its type.
bool isItem(const std::string& name, const std::string& text) {
  const auto rows = paramTable();
  return std::any_of(rows.begin(), rows.end(), [&name, &text](const ParamRow& row) {
    return row.name == name && isValueOf(row.kind, text);
  });
}

void readArgument(Params& params, const std::string& argument) {
  if (!argument.starts_with(dashes) || argument == dashes) fail("Malformed parameter: " + argument);
  TextReader stream(argument);
  ParamInfo item;
  stream >> item;
  const bool alone = stream.peek() == TextReader::traits_type::eof();
  if (!alone || !isItem(item.name(), item.text()))
    fail("Malformed parameter: " + argument.substr(dashes.size()));
  TextReader(argument) >> params;
}

}  // namespace

void readArguments(Params& params, const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) readArgument(params, argument);
}

}  // namespace starsift

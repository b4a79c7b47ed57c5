#include "models/read/LpLexer.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "models/text/ModelError.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

struct KeywordText {
  /// A blank stands for one or more.
  std::string_view text;
  LpKeyword keyword;
};

/// Longer ones first where one begins another.
constexpr std::array<KeywordText, 45> keywordTexts{{
    {"maximize", LpKeyword::maximise},
    {"maximise", LpKeyword::maximise},
    {"maximum", LpKeyword::maximise},
    {"max", LpKeyword::maximise},
    {"minimize", LpKeyword::minimise},
    {"minimise", LpKeyword::minimise},
    {"minimum", LpKeyword::minimise},
    {"min", LpKeyword::minimise},
    {"subject to", LpKeyword::rows},
    {"such that", LpKeyword::rows},
    {"s.t.", LpKeyword::rows},
    {"st.", LpKeyword::rows},
    {"st", LpKeyword::rows},
    {"bounds", LpKeyword::bounds},
    {"bound", LpKeyword::bounds},
    {"general constraints", LpKeyword::refused},
    {"general constraint", LpKeyword::refused},
    {"gencons", LpKeyword::refused},
    {"generals", LpKeyword::integers},
    {"general", LpKeyword::integers},
    {"gens", LpKeyword::integers},
    {"gen", LpKeyword::integers},
    {"integers", LpKeyword::integers},
    {"integer", LpKeyword::integers},
    {"ints", LpKeyword::integers},
    {"int", LpKeyword::integers},
    {"binaries", LpKeyword::binaries},
    {"binary", LpKeyword::binaries},
    {"bins", LpKeyword::binaries},
    {"bin", LpKeyword::binaries},
    {"semi-continuous", LpKeyword::refused},
    {"semicontinuous", LpKeyword::refused},
    {"semis", LpKeyword::refused},
    {"semi", LpKeyword::refused},
    {"sos1", LpKeyword::refused},
    {"sos2", LpKeyword::refused},
    {"sos", LpKeyword::refused},
    {"pwlobj", LpKeyword::refused},
    {"lazy constraints", LpKeyword::refused},
    {"user cuts", LpKeyword::refused},
    {"multi-objectives", LpKeyword::refused},
    {"scenarios", LpKeyword::refused},
    {"scenario", LpKeyword::refused},
    {"indicators", LpKeyword::refused},
    {"end", LpKeyword::end},
}};

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
}

/// Bytes that names may have behind the first one.
bool isNamePart(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte > 0x20 && byte != 0x7F &&
         std::string_view("+-*^<>=:\\").find(c) == std::string_view::npos;
}

bool beginsName(char c) {
  return isNamePart(c) && (c < '0' || c > '9') &&
         std::string_view("./[]").find(c) == std::string_view::npos;
}

std::size_t blanksAt(std::string_view text, std::size_t position) {
  std::size_t end = position;
  while (end < text.size() && isBlank(text[end])) ++end;
  return end - position;
}

/// The length of the keyword that `text` begins with, 0 if it begins with another word.
std::size_t matchedLength(std::string_view text, std::string_view keyword) {
  std::size_t position = 0;
  for (const char c : keyword) {
    if (c == ' ') {
      const std::size_t blanks = blanksAt(text, position);
      if (blanks == 0) return 0;
      position += blanks;
    } else if (position == text.size() || lowered(text[position++]) != c) {
      return 0;
    }
  }
  if (position < text.size() && isNamePart(text[position])) return 0;
  const std::size_t behind = position + blanksAt(text, position);
  return behind < text.size() && text[behind] == ':' ? 0 : position;
}

}  // namespace

bool isLpName(std::string_view text) {
  if (text.empty() || !beginsName(text.front()) ||
      !std::all_of(text.begin(), text.end(), isNamePart))
    return false;
  bool isPositive = true;
  if (isInfinityWord(text, isPositive) || equalsInAnyCase(text, "free")) return false;
  // The two words of "subject to" and the like begin no line as names either.
  return !isLpKeyword(text);
}

bool isLpKeyword(std::string_view text) {
  return std::any_of(keywordTexts.begin(), keywordTexts.end(), [text](const KeywordText& known) {
    return equalsInAnyCase(text, known.text.substr(0, known.text.find(' ')));
  });
}

bool isRelation(LpTokenKind kind) {
  return kind == LpTokenKind::less || kind == LpTokenKind::greater || kind == LpTokenKind::equal;
}

LpLexer::LpLexer(std::string_view text) : rest_(text), lineBegin_(text.data()) {
  current_ = scan();
  next_ = scan();
}

LpToken LpLexer::take() {
  const LpToken token = current_;
  current_ = next_;
  if (token.kind != LpTokenKind::end) next_ = scan();
  return token;
}

void LpLexer::makeName() {
  current_.kind = LpTokenKind::name;
  current_.keyword = LpKeyword::none;
}

void LpLexer::skipBlanks() {
  while (!rest_.empty()) {
    if (rest_.front() == '\\') {
      const std::size_t end = std::min(rest_.find('\n'), rest_.size());
      comment_ = {rest_.substr(1, end - 1), line_};
      rest_.remove_prefix(end);
    } else if (rest_.front() == '\n') {
      ++line_;
      isLineStart_ = true;
      rest_.remove_prefix(1);
      lineBegin_ = rest_.data();
    } else if (isBlank(rest_.front())) {
      rest_.remove_prefix(1);
    } else {
      return;
    }
  }
}

bool LpLexer::scanKeyword(LpToken& token) {
  for (const KeywordText& known : keywordTexts) {
    const std::size_t length = matchedLength(rest_, known.text);
    if (length == 0) continue;
    token.kind = LpTokenKind::keyword;
    token.keyword = known.keyword;
    token.text = rest_.substr(0, length);
    token.isWord = std::all_of(token.text.begin(), token.text.end(), isNamePart);
    return true;
  }
  return false;
}

bool LpLexer::scanSign(LpToken& token) {
  const char c = rest_.front();
  const char behind = rest_.size() > 1 ? rest_[1] : '\0';
  token.text = rest_.substr(0, 1);
  if (c == '<' || c == '>' || c == '=') {
    const bool isPair = behind == '=' || (c == '=' && (behind == '<' || behind == '>'));
    if (isPair) token.text = rest_.substr(0, 2);
    const char direction = c == '=' && isPair ? behind : c;
    token.kind = direction == '<'   ? LpTokenKind::less
                 : direction == '>' ? LpTokenKind::greater
                                    : LpTokenKind::equal;
  } else if (c == '-' && behind == '>') {
    token.kind = LpTokenKind::other;
    token.text = rest_.substr(0, 2);
  } else if (c == '+') {
    token.kind = LpTokenKind::plus;
  } else if (c == '-') {
    token.kind = LpTokenKind::minus;
  } else if (c == ':') {
    token.kind = LpTokenKind::colon;
  } else if (std::string_view("[]*^/").find(c) != std::string_view::npos) {
    token.kind = LpTokenKind::other;
  } else {
    return false;
  }
  return true;
}

LpToken LpLexer::scan() {
  skipBlanks();
  LpToken token;
  token.line = line_;
  if (rest_.empty()) return token;
  token.startsLine = std::exchange(isLineStart_, false);
  token.isIndented = rest_.data() != lineBegin_;
  if ((token.startsLine && scanKeyword(token)) || scanSign(token)) {
    // Both have set the token.
  } else if (const auto number = scanNumber(rest_, "eE"); number) {
    token.kind = LpTokenKind::number;
    token.number = *number;
    token.text = rest_.substr(0, number->length);
  } else if (beginsName(rest_.front())) {
    token.kind = LpTokenKind::name;
    std::size_t length = 1;
    while (length < rest_.size() && isNamePart(rest_[length])) ++length;
    token.text = rest_.substr(0, length);
  } else {
    throw ModelError(line_, inQuotes(rest_.substr(0, 1)) + " begins no word");
  }
  rest_.remove_prefix(token.text.size());
  return token;
}

}  // namespace starsift

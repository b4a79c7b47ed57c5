// Tokens of LP files (the format that CPLEX introduced).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "models/text/ModelNumber.h"

namespace starsift {

/// Words that open a section. They count at the start of a line only and not before ":", where
/// they are names; LpKeywordChoice tells them from columns of the same name.
enum class LpKeyword : std::uint8_t {
  none,
  maximise,
  minimise,
  rows,
  bounds,
  integers,
  binaries,
  end,
  /// Sections that a linear model can't have.
  refused,
};

enum class LpTokenKind : std::uint8_t {
  end,
  keyword,
  name,
  number,
  plus,
  minus,
  colon,
  less,
  greater,
  equal,
  /// "[", "]", "*", "^" or "->", which no linear expression has.
  other,
};

/// True for less, greater and equal.
bool isRelation(LpTokenKind kind);

struct LpToken {
  LpTokenKind kind = LpTokenKind::end;
  std::string_view text;
  /// Counted from 1.
  std::size_t line = 1;
  /// True for the first token of a line.
  bool startsLine = false;
  /// True unless the token begins in column 1.
  bool isIndented = false;
  /// Only for keywords.
  LpKeyword keyword = LpKeyword::none;
  /// True for keywords that are names elsewhere: one word.
  bool isWord = false;
  /// Only for numbers.
  NumberForm number;
};

struct LpComment {
  /// Without the backslash.
  std::string_view text;
  /// 0 if there is no comment.
  std::size_t line = 0;
};

/// True if the text is read as one name wherever a name may stand: it has no operators and blanks,
/// isn't a keyword, "free" or infinity, and doesn't begin as a number does.
bool isLpName(std::string_view text);

/// True for a name that is a keyword at the start of a line, or its first word.
bool isLpKeyword(std::string_view text);

/// Yields the tokens of a text one by one, with one token of lookahead.
class LpLexer {
 public:
  /// ModelError, as for take(), at a byte that begins no token.
  explicit LpLexer(std::string_view text);

  const LpToken& peek() const { return current_; }
  /// The token behind peek().
  const LpToken& peekNext() const { return next_; }
  LpToken take();
  /// Turns the keyword peek(), which must be one word, into a name.
  void makeName();
  /// The last comment before peekNext().
  const LpComment& lastComment() const { return comment_; }

 private:
  LpToken scan();
  void skipBlanks();
  bool scanKeyword(LpToken& token);
  bool scanSign(LpToken& token);

  std::string_view rest_;
  LpComment comment_;
  std::size_t line_ = 1;
  bool isLineStart_ = true;
  const char* lineBegin_;
  LpToken current_;
  LpToken next_;
};

}  // namespace starsift

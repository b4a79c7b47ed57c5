// Tokens of LP files (the format that CPLEX introduced).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "models/text/ModelNumber.h"

namespace starsift {

/// Words that open a section. They count at the start of a line only and not before ":", where
/// they are names.
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

struct LpToken {
  LpTokenKind kind = LpTokenKind::end;
  std::string_view text;
  /// Counted from 1.
  std::size_t line = 1;
  /// Only for keywords.
  LpKeyword keyword = LpKeyword::none;
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

/// Yields the tokens of a text one by one, with one token of lookahead.
class LpLexer {
 public:
  /// ModelError, as for take(), at a byte that begins no token.
  explicit LpLexer(std::string_view text);

  const LpToken& peek() const { return current_; }
  /// The token behind peek().
  const LpToken& peekNext() const { return next_; }
  LpToken take();
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
  LpToken current_;
  LpToken next_;
};

}  // namespace starsift

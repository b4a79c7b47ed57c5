#include "models/read/LpKeywordChoice.h"

#include "models/text/ModelError.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

/// Sections whose text may begin with a sign.
bool mayOpenWithSign(LpKeyword keyword) {
  return keyword == LpKeyword::rows || keyword == LpKeyword::bounds ||
         keyword == LpKeyword::maximise || keyword == LpKeyword::minimise;
}

}  // namespace

void LpKeywordChoice::enterSection(const LpToken& keyword) {
  areKeywordsIndented_ = areKeywordsIndented_ || keyword.isIndented;
  hasIndentedLine_ = false;
  hasLineInFirstColumn_ = false;
}

bool LpKeywordChoice::mayBeName() const {
  return lexer_.peek().kind == LpTokenKind::keyword && lexer_.peek().isWord;
}

bool LpKeywordChoice::isColumn() const {
  return columns_.find(lexer_.peek().text).has_value();
}

bool LpKeywordChoice::isFollowedBySign() const {
  const LpTokenKind kind = lexer_.peekNext().kind;
  return kind == LpTokenKind::plus || kind == LpTokenKind::minus;
}

bool LpKeywordChoice::hasSignOfTerm() const {
  return isFollowedBySign() && !lexer_.peekNext().startsLine &&
         !mayOpenWithSign(lexer_.peek().keyword);
}

bool LpKeywordChoice::isFollowedByFree() const {
  const LpToken& next = lexer_.peekNext();
  return next.kind == LpTokenKind::name && equalsInAnyCase(next.text, "free");
}

void LpKeywordChoice::refuse() const {
  throw ModelError(lexer_.peek().line, inQuotes(lexer_.peek().text) +
                                           " is a keyword and a column, and could be either here");
}

void LpKeywordChoice::chooseByIndentation() {
  if (!isColumn()) return;
  if (!lexer_.peek().isIndented || areKeywordsIndented_) refuse();
  lexer_.makeName();
}

void LpKeywordChoice::settleFirst() {
  if (!mayBeName()) return;
  if (isRelation(lexer_.peekNext().kind) || hasSignOfTerm()) return lexer_.makeName();
  // A keyword in column 1 whose section begins on the next line.
  if (!isFollowedBySign() || (lexer_.peekNext().startsLine && !lexer_.peek().isIndented)) return;
  chooseByIndentation();
}

void LpKeywordChoice::settleBehindSign() {
  if (!mayBeName()) return;
  const bool isTerm = isFollowedBySign() && !lexer_.peekNext().startsLine;
  if (isTerm || isRelation(lexer_.peekNext().kind) || (lexer_.peek().isIndented && isColumn()))
    lexer_.makeName();
}

void LpKeywordChoice::settleBehindNumber() {
  settleFirst();
  // "+ 5" and a line " st" are a constant and a keyword, or a term.
  if (mayBeName() && lexer_.peek().isIndented && isColumn()) refuse();
}

void LpKeywordChoice::settleBound() {
  if (!mayBeName()) return;
  if (isRelation(lexer_.peekNext().kind)) return lexer_.makeName();
  if (!isFollowedByFree() || !isColumn()) return;
  const LpToken& free = lexer_.peekNext();
  if (!columns_.find(free.text)) return lexer_.makeName();
  // A section whose first column is called free, in column 1 as for settleFirst().
  if (lexer_.peek().isIndented || !free.startsLine) chooseByIndentation();
}

void LpKeywordChoice::settleBoundColumn() {
  if (mayBeName() && lexer_.peek().isIndented && isColumn()) lexer_.makeName();
}

void LpKeywordChoice::chooseListed() {
  const LpToken& token = lexer_.peek();
  const LpToken& next = lexer_.peekNext();
  if (token.isIndented) {
    // As the last word of the file it is End, or a column and End is missing.
    if (token.keyword == LpKeyword::end && next.kind == LpTokenKind::end) refuse();
    return chooseByIndentation();
  }
  if (token.keyword == LpKeyword::end) return;
  const bool opensIndentedLine =
      next.kind == LpTokenKind::name && next.startsLine && next.isIndented;
  if (hasLineInFirstColumn_ || (!hasIndentedLine_ && !opensIndentedLine)) refuse();
}

void LpKeywordChoice::settleListed() {
  if (mayBeName() && isColumn()) chooseListed();
  const LpToken& token = lexer_.peek();
  if (token.kind != LpTokenKind::name || !token.startsLine) return;
  (token.isIndented ? hasIndentedLine_ : hasLineInFirstColumn_) = true;
}

}  // namespace starsift

// Whether a keyword of an LP file opens a section or is the name of a column.
#pragma once

#include "models/read/LpLexer.h"
#include "models/record/NameTable.h"

namespace starsift {

/// Columns may have the names of keywords, and other programs write such columns at the start of
/// a line. What follows decides first, then the indentation: keywords in column 1, names behind
/// blanks. Each function looks at the next token; if that is a keyword and stands for a name, the
/// token becomes one. ModelError if it could be both.
class LpKeywordChoice {
 public:
  LpKeywordChoice(LpLexer& lexer, const NameTable& columns) : lexer_(lexer), columns_(columns) {}

  /// To be called with each keyword that opens a section.
  void enterSection(const LpToken& keyword);
  /// At the first operand of an expression.
  void settleFirst();
  /// Behind a sign.
  void settleBehindSign();
  /// Behind a number that may be the factor of a name.
  void settleBehindNumber();
  /// Where a bound may begin.
  void settleBound();
  /// Where a bound needs its column.
  void settleBoundColumn();
  /// Where a list of columns may go on.
  void settleListed();

 private:
  bool mayBeName() const;
  bool isColumn() const;
  /// True if a sign follows on the line, with which no section of this keyword can begin.
  bool hasSignOfTerm() const;
  bool isFollowedBySign() const;
  bool isFollowedByFree() const;
  /// Makes an indented column a name, unless keywords are indented too.
  void chooseByIndentation();
  void chooseListed();
  [[noreturn]] void refuse() const;

  LpLexer& lexer_;
  const NameTable& columns_;
  bool areKeywordsIndented_ = false;
  /// Lines of the list of columns that is being read.
  bool hasIndentedLine_ = false;
  bool hasLineInFirstColumn_ = false;
};

}  // namespace starsift

#include "models/read/LpReader.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "models/read/ByteOrderMark.h"
#include "models/read/LpBounds.h"
#include "models/read/LpKeywordChoice.h"
#include "models/read/LpLexer.h"
#include "models/record/RowBuilder.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

LpTokenKind flipped(LpTokenKind relation) {
  if (relation == LpTokenKind::less) return LpTokenKind::greater;
  return relation == LpTokenKind::greater ? LpTokenKind::less : relation;
}

/// A decimal comma, or what ends statements in other languages.
bool beginsWithPunctuation(std::string_view word) {
  return word.starts_with(',') || word.starts_with(';');
}

/// An expression and where it began.
struct Side {
  LinearTerms terms;
  bool isEmpty = true;
  std::size_t line = 0;
  bool hasColumns() const { return !terms.columns.empty(); }
};

/// The label of a row, empty if it has none, and the line on which the row begins.
struct RowLabel {
  std::string text;
  std::size_t line = 0;
  /// True if a comment says that the row is the lower bound of the row before.
  bool isLowerBound = false;
};

class LpReader {
 public:
  LpReader(std::string_view text, const ReadOptions& options)
      : lexer_(text),
        keywords_(lexer_, builder_.model.columnNames),
        bounds_(builder_.model, options) {}

  Model read();

 private:
  void readSection(const LpToken& keyword);
  void readObjective(const LpToken& keyword);
  void readRows();
  void readRow();
  std::string takeLabel();
  RowLabel takeRowLabel();
  /// True for a row "few_lower" behind a row "few" and a comment "\ range: few few_lower", by which
  /// lpText() writes rows with two bounds.
  bool isAnnounced(std::string_view label) const;
  Side readSide(bool endsWithLine);
  /// False if no further term follows. A number that `endsWithLine` isn't the factor of a name
  /// on the next line: that begins another row.
  bool readTerm(Side& side, bool endsWithLine);
  int takeSigns();
  void addRow(RowLabel label, Side left, LpTokenKind relation, Side right);
  void addRange(RowLabel label, const Side& lower, LpTokenKind relation, Side middle);
  void readBounds();
  void readBound();
  bool beginsValue() const;
  QQ takeValue();
  void readKinds(ColumnKind kind);
  std::uint32_t takeColumn();
  void nameRows();
  /// True before a keyword and at the end of the file.
  bool isAtSectionEnd() const;
  /// True if the next word, which may be glued to the number of a right side, can only be its
  /// column: one that is known, and not the rest of "1e5" or "0x10".
  bool isClearFactor(const LpToken& number) const;
  /// ModelError if the next word is glued to the number, as in "1,5".
  void requireBlankBehind(const LpToken& number) const;
  /// ModelError if what stands behind the number of a right side ends the row, as in "3 ;" or
  /// "3 bounds".
  void requireColumnOfRightSide(const LpToken& name) const;
  [[noreturn]] void refuse(const LpToken& token) const;

  LpLexer lexer_;
  RowBuilder builder_;
  LpKeywordChoice keywords_;
  LpBounds bounds_;
  NumberReader numbers_;
  std::vector<RowLabel> labels_;
};

void LpReader::refuse(const LpToken& token) const {
  if (token.kind == LpTokenKind::end) throw ModelError(token.line, "the file ends too early");
  if (token.kind != LpTokenKind::other)
    throw ModelError(token.line, inQuotes(token.text) + " stands at a wrong place");
  throw ModelError(token.line, token.text == "->" ? "indicator rows (->) are not supported"
                                                  : "quadratic terms (" + std::string(token.text) +
                                                        ") are not supported");
}

int LpReader::takeSigns() {
  int sign = 1;
  while (lexer_.peek().kind == LpTokenKind::plus || lexer_.peek().kind == LpTokenKind::minus)
    if (lexer_.take().kind == LpTokenKind::minus) sign = -sign;
  return sign;
}

void LpReader::requireColumnOfRightSide(const LpToken& name) const {
  if (beginsWithPunctuation(name.text)) refuse(name);
  if (isLpKeyword(name.text) && !builder_.model.columnNames.find(name.text))
    throw ModelError(name.line, "the keyword " + inQuotes(name.text) + " doesn't begin its line");
}

bool LpReader::isClearFactor(const LpToken& number) const {
  const LpToken& next = lexer_.peek();
  if (next.kind != LpTokenKind::name || lexer_.peekNext().kind == LpTokenKind::colon) return false;
  const char first = lowered(next.text.front());
  const bool isNumberLike = first == 'e' || first == 'd' || (first == 'x' && number.text == "0");
  return !isNumberLike && builder_.model.columnNames.find(next.text).has_value();
}

void LpReader::requireBlankBehind(const LpToken& number) const {
  const LpToken& next = lexer_.peek();
  const bool isWord = next.kind == LpTokenKind::name || next.kind == LpTokenKind::number;
  if (!isWord || number.text.data() + number.text.size() != next.text.data()) return;
  throw ModelError(number.line, inQuotes(std::string(number.text) + std::string(next.text)) +
                                    " is not a number");
}

bool LpReader::readTerm(Side& side, bool endsWithLine) {
  if (side.isEmpty) keywords_.settleFirst();
  const LpTokenKind kind = lexer_.peek().kind;
  const bool isSigned = kind == LpTokenKind::plus || kind == LpTokenKind::minus;
  const bool isLabel = kind == LpTokenKind::name && lexer_.peekNext().kind == LpTokenKind::colon;
  if (!isSigned && !side.isEmpty) return false;
  if (!isSigned && (isLabel || (kind != LpTokenKind::name && kind != LpTokenKind::number))) {
    if (kind == LpTokenKind::other) refuse(lexer_.peek());
    return false;
  }
  QQ factor(takeSigns());
  side.isEmpty = false;
  if (isSigned) keywords_.settleBehindSign();
  std::optional<LpToken> number;
  if (lexer_.peek().kind == LpTokenKind::number) {
    number = lexer_.take();
    factor *= numbers_.value(number->number, number->text, number->line);
    const bool mayBeGlued =
        endsWithLine ? isClearFactor(*number) : !beginsWithPunctuation(lexer_.peek().text);
    if (!mayBeGlued) requireBlankBehind(*number);
    if (!endsWithLine) keywords_.settleBehindNumber();
  }
  const LpToken& name = lexer_.peek();
  if (name.kind == LpTokenKind::other) refuse(name);
  const bool hasName = name.kind == LpTokenKind::name &&
                       lexer_.peekNext().kind != LpTokenKind::colon &&
                       (!number || !endsWithLine || number->line == name.line);
  if (!hasName) {
    if (!number) refuse(name);
    side.terms.constant += factor;
    return true;
  }
  bool isPositive = true;
  if (isInfinityWord(name.text, isPositive))
    throw ModelError(name.line, inQuotes(name.text) + " stands where a column is expected");
  if (number && endsWithLine) requireColumnOfRightSide(name);
  builder_.addTerm(side.terms, builder_.column(lexer_.take().text), factor);
  if (lexer_.peek().kind == LpTokenKind::other) refuse(lexer_.peek());
  return true;
}

Side LpReader::readSide(bool endsWithLine) {
  Side side;
  side.line = lexer_.peek().line;
  while (side.isEmpty || !endsWithLine || lexer_.peek().line == side.line)
    if (!readTerm(side, endsWithLine)) break;
  builder_.endTerms(side.terms);
  return side;
}

std::string LpReader::takeLabel() {
  const LpTokenKind kind = lexer_.peek().kind;
  if ((kind != LpTokenKind::name && kind != LpTokenKind::number) ||
      lexer_.peekNext().kind != LpTokenKind::colon)
    return {};
  std::string label(lexer_.take().text);
  lexer_.take();
  return label;
}

bool LpReader::isAnnounced(std::string_view label) const {
  if (label.empty() || labels_.empty() || builder_.model.senses.back() != RowSense::less)
    return false;
  std::string_view comment = lexer_.lastComment().text;
  // A comment before the row is another one, such as the name of the model.
  return lexer_.lastComment().line > labels_.back().line && takeWord(comment) == "range:" &&
         takeWord(comment) == labels_.back().text && takeWord(comment) == label &&
         trimmed(comment).empty();
}

RowLabel LpReader::takeRowLabel() {
  const std::size_t line = lexer_.peek().line;
  std::string text = takeLabel();
  const bool isLowerBound = isAnnounced(text);
  return {std::move(text), line, isLowerBound};
}

void LpReader::readObjective(const LpToken& keyword) {
  Objective& objective = builder_.model.objective;
  if (objective.exists) throw ModelError(keyword.line, "there are two objectives");
  objective.exists = true;
  if (keyword.keyword == LpKeyword::maximise) objective.sense = ObjectiveSense::maximise;
  objective.name = takeLabel();
  if (objective.name.empty()) objective.name = "obj";
  Side side = readSide(false);
  if (!isAtSectionEnd()) refuse(lexer_.peek());
  objective.constant = side.terms.constant;
  builder_.setObjective(std::move(side.terms));
}

void LpReader::addRow(RowLabel label, Side left, LpTokenKind relation, Side right) {
  if (!left.hasColumns() && right.hasColumns()) {
    std::swap(left, right);
    relation = flipped(relation);
  }
  LinearTerms terms;
  for (std::size_t k = 0; k < left.terms.columns.size(); ++k)
    builder_.addTerm(terms, left.terms.columns[k], left.terms.coefficients[k]);
  for (std::size_t k = 0; k < right.terms.columns.size(); ++k)
    builder_.addTerm(terms, right.terms.columns[k], -right.terms.coefficients[k]);
  builder_.endTerms(terms);
  const QQ side = right.terms.constant - left.terms.constant;
  const RowSense sense = relation == LpTokenKind::equal  ? RowSense::equal
                         : relation == LpTokenKind::less ? RowSense::less
                                                         : RowSense::greater;
  if (label.isLowerBound && sense == RowSense::greater && builder_.addLowerBound(terms, side))
    return;
  builder_.addRow(std::move(terms), sense, sense == RowSense::less ? -QQ::infinity() : side,
                  sense == RowSense::greater ? QQ::infinity() : side);
  labels_.push_back(std::move(label));
}

void LpReader::addRange(RowLabel label, const Side& lower, LpTokenKind relation, Side middle) {
  const LpToken second = lexer_.take();
  const Side upper = readSide(true);
  if (lower.hasColumns() || upper.hasColumns() || lower.isEmpty || upper.isEmpty)
    throw ModelError(label.line, "a row between two bounds has a number on either side");
  if (second.kind != relation || relation == LpTokenKind::equal)
    throw ModelError(second.line, "the two relations of a row point to the same side");
  // Programs that wrap long rows give them names.
  if (label.text.empty() && second.line != middle.line && !second.startsLine)
    throw ModelError(
        second.line,
        "the line may go on with the row before or be a row of its own: a range without a name "
        "that begins with its number stands on one line, or its second relation begins one");
  QQ least = lower.terms.constant - middle.terms.constant;
  QQ most = upper.terms.constant - middle.terms.constant;
  if (relation == LpTokenKind::greater) std::swap(least, most);
  if (least > most)
    throw ModelError(label.line, "the row has no value: lower " + numberText(least) + " > upper " +
                                     numberText(most));
  builder_.addRow(std::move(middle.terms), RowSense::ranged, std::move(least), std::move(most));
  labels_.push_back(std::move(label));
}

void LpReader::readRow() {
  RowLabel label = takeRowLabel();
  const bool hasLabel = !label.text.empty();
  Side left = readSide(false);
  const LpToken relation = lexer_.peek();
  if (!isRelation(relation.kind)) refuse(relation);
  if (left.isEmpty && !hasLabel) refuse(relation);
  lexer_.take();
  Side right = readSide(left.hasColumns() || left.isEmpty);
  if (right.isEmpty) refuse(lexer_.peek());
  if (isRelation(lexer_.peek().kind))
    return addRange(std::move(label), left, relation.kind, std::move(right));
  addRow(std::move(label), std::move(left), relation.kind, std::move(right));
}

bool LpReader::isAtSectionEnd() const {
  return lexer_.peek().kind == LpTokenKind::keyword || lexer_.peek().kind == LpTokenKind::end;
}

void LpReader::readRows() {
  const std::size_t before = labels_.size();
  for (keywords_.settleFirst(); !isAtSectionEnd(); keywords_.settleFirst()) {
    const bool isLabelled = lexer_.peekNext().kind == LpTokenKind::colon;
    if (labels_.size() > before && !lexer_.peek().startsLine && !isLabelled) refuse(lexer_.peek());
    readRow();
  }
}

std::uint32_t LpReader::takeColumn() {
  const LpToken token = lexer_.take();
  if (token.kind != LpTokenKind::name) refuse(token);
  if (const auto column = builder_.model.columnNames.find(token.text)) return *column;
  throw ModelError(token.line, "there is no column " + inQuotes(token.text));
}

bool LpReader::beginsValue() const {
  const LpToken& token = lexer_.peek();
  bool isPositive = true;
  return token.kind == LpTokenKind::number || token.kind == LpTokenKind::plus ||
         token.kind == LpTokenKind::minus ||
         (token.kind == LpTokenKind::name && isInfinityWord(token.text, isPositive) &&
          !builder_.model.columnNames.find(token.text));
}

QQ LpReader::takeValue() {
  const int sign = takeSigns();
  const LpToken token = lexer_.take();
  bool isPositive = true;
  QQ value;
  if (token.kind == LpTokenKind::name && isInfinityWord(token.text, isPositive))
    value = QQ::infinity();
  else if (token.kind == LpTokenKind::number)
    value = numbers_.value(token.number, token.text, token.line);
  else
    refuse(token);
  if (token.kind == LpTokenKind::number) requireBlankBehind(token);
  return sign < 0 ? -value : value;
}

void LpReader::readBound() {
  const std::size_t line = lexer_.peek().line;
  std::optional<QQ> before;
  LpTokenKind relation = LpTokenKind::end;
  if (beginsValue()) {
    before = takeValue();
    const LpToken token = lexer_.take();
    if (!isRelation(token.kind)) refuse(token);
    relation = flipped(token.kind);
  }
  keywords_.settleBoundColumn();
  const std::uint32_t column = takeColumn();
  if (before) bounds_.setBound(column, relation, *before, line);
  const LpToken& behind = lexer_.peek();
  if (isRelation(behind.kind)) {
    const LpTokenKind kind = lexer_.take().kind;
    bounds_.setBound(column, kind, takeValue(), line);
  } else if (!before) {
    if (behind.kind != LpTokenKind::name || !equalsInAnyCase(behind.text, "free")) refuse(behind);
    lexer_.take();
    bounds_.setFree(column, line);
  }
}

void LpReader::readBounds() {
  for (keywords_.settleBound(); !isAtSectionEnd(); keywords_.settleBound()) readBound();
}

void LpReader::readKinds(ColumnKind kind) {
  for (keywords_.settleListed(); !isAtSectionEnd(); keywords_.settleListed()) {
    const std::size_t line = lexer_.peek().line;
    bounds_.setKind(takeColumn(), kind, line);
  }
}

void LpReader::readSection(const LpToken& keyword) {
  keywords_.enterSection(keyword);
  switch (keyword.keyword) {
    case LpKeyword::maximise:
    case LpKeyword::minimise:
      return readObjective(keyword);
    case LpKeyword::rows:
      return readRows();
    case LpKeyword::bounds:
      return readBounds();
    case LpKeyword::integers:
      return readKinds(ColumnKind::integer);
    case LpKeyword::binaries:
      return readKinds(ColumnKind::binary);
    default:
      throw ModelError(keyword.line, "the section " + inQuotes(keyword.text) + " is not supported");
  }
}

void LpReader::nameRows() {
  NameTable names;
  NameTable labels;
  for (const auto& label : labels_)
    if (!label.text.empty() && !labels.add(label.text).isNew)
      throw ModelError(label.line, "the row " + inQuotes(label.text) + " comes a second time");
  for (std::size_t i = 0; i < labels_.size(); ++i) {
    std::string name = labels_[i].text;
    if (name.empty()) {
      name = "R" + std::to_string(i + 1);
      while (labels.find(name)) name += '_';
    }
    names.add(name);
  }
  builder_.finish(std::move(names));
}

Model LpReader::read() {
  if (lexer_.peek().kind == LpTokenKind::name && lexer_.peekNext().kind == LpTokenKind::colon)
    throw ModelError(lexer_.peek().line,
                     "this is the LP dialect of lp_solve (" +
                         inQuotes(std::string(lexer_.peek().text) + ':') +
                         "), which is not supported: let lp_solve write it as MPS");
  if (lexer_.peek().keyword != LpKeyword::maximise && lexer_.peek().keyword != LpKeyword::minimise)
    throw ModelError(lexer_.peek().line,
                     "an LP file begins with its objective, Minimize or Maximize");
  while (lexer_.peek().kind == LpTokenKind::keyword && lexer_.peek().keyword != LpKeyword::end)
    readSection(lexer_.take());
  Model& model = builder_.model;
  if (lexer_.take().kind == LpTokenKind::end)
    model.remarks.push_back({lexer_.peek().line, "the word End is missing"});
  if (lexer_.peek().kind != LpTokenKind::end)
    throw ModelError(lexer_.peek().line, inQuotes(lexer_.peek().text) + " stands behind End");
  bounds_.finish();
  nameRows();
  return std::move(builder_.model);
}

/// lp_solve's comments, which no other dialect has.
void requireDialect(std::string_view text) {
  std::size_t line = 1;
  while (!text.empty()) {
    const std::string_view first = trimmed(takeLine(text));
    if (first.starts_with("/*") || first.starts_with("//"))
      throw ModelError(line,
                       "this is the LP dialect of lp_solve (comments in /* */ and //), which "
                       "is not supported: let lp_solve write it as MPS");
    if (!first.empty() && !first.starts_with('\\')) return;
    ++line;
  }
}

}  // namespace

Model readLp(std::string_view text, const ReadOptions& options) {
  Model marked;
  takeByteOrderMark(text, marked);
  requireDialect(text);
  Model model = LpReader(text, options).read();
  model.isFromLp = true;
  model.remarks.insert(model.remarks.begin(), marked.remarks.begin(), marked.remarks.end());
  return model;
}

}  // namespace starsift

#include "models/read/OpbReader.h"

#include <algorithm>
#include <string>
#include <utility>

#include "models/record/RowBuilder.h"
#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

/// A word of the file and its line; the word is empty at the end.
struct OpbWord {
  std::string_view text;
  std::size_t line;
};

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

bool isRelation(std::string_view word) {
  return word == ">=" || word == "<=" || word == "=";
}

/// The words of the text; ";", ":" and relations are words of their own.
class OpbWords {
 public:
  explicit OpbWords(std::string_view text) : rest_(text) { advance(); }

  const OpbWord& peek() const { return current_; }
  OpbWord take() {
    const OpbWord word = current_;
    advance();
    return word;
  }

 private:
  void skip() {
    while (!rest_.empty()) {
      if (isLineStart_ && rest_.front() == '*') {
        rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size()));
      } else if (isSpace(rest_.front())) {
        if (rest_.front() == '\n') ++line_;
        isLineStart_ = rest_.front() == '\n';
        rest_.remove_prefix(1);
      } else {
        break;
      }
    }
    isLineStart_ = false;
  }

  void advance() {
    skip();
    std::size_t length = 0;
    constexpr std::string_view marks = ";:<>=";
    if (!rest_.empty() && marks.find(rest_.front()) != std::string_view::npos) {
      const bool isPair = rest_.size() > 1 && rest_.front() != '=' && rest_[1] == '=';
      length = isPair ? 2 : 1;
    } else {
      while (length < rest_.size() && !isSpace(rest_[length]) &&
             marks.find(rest_[length]) == std::string_view::npos)
        ++length;
    }
    current_ = {rest_.substr(0, length), line_};
    rest_.remove_prefix(length);
  }

  std::string_view rest_;
  std::size_t line_ = 1;
  bool isLineStart_ = true;
  OpbWord current_{};
};

bool beginsNumber(std::string_view word) {
  const char c = word.empty() ? '\0' : word.front();
  return c == '+' || c == '-' || (c >= '0' && c <= '9');
}

class OpbReader {
 public:
  explicit OpbReader(std::string_view text) : words_(text) {}

  Model read();

 private:
  void readObjective();
  void readRow();
  LinearTerms readTerms();
  void readTerm(LinearTerms& terms);
  QQ takeInteger();
  void expect(std::string_view mark);
  [[noreturn]] static void refuse(const OpbWord& word);

  OpbWords words_;
  RowBuilder builder_;
  NumberReader numbers_;
  NameTable rowNames_;
};

void OpbReader::refuse(const OpbWord& word) {
  if (word.text.empty()) throw ModelError(word.line, "the file ends too early");
  throw ModelError(word.line, inQuotes(word.text) + " stands at a wrong place");
}

void OpbReader::expect(std::string_view mark) {
  const OpbWord word = words_.take();
  if (word.text != mark) refuse(word);
}

QQ OpbReader::takeInteger() {
  OpbWord word = words_.take();
  if (!beginsNumber(word.text)) refuse(word);
  std::string text(word.text);
  // A sign may stand apart from its digits.
  if (text.size() == 1 && (text[0] == '+' || text[0] == '-')) text += words_.take().text;
  QQ value = numbers_.read(text, word.line);
  if (!value.isInteger()) throw ModelError(word.line, inQuotes(text) + " is not an integer");
  return value;
}

void OpbReader::readTerm(LinearTerms& terms) {
  QQ factor(1);
  if (beginsNumber(words_.peek().text)) factor = takeInteger();
  OpbWord literal = words_.take();
  const bool isNegated = literal.text.starts_with('~');
  const OpbWord written = literal;
  if (isNegated) literal.text.remove_prefix(1);
  if (literal.text.empty() || beginsNumber(literal.text) || isRelation(literal.text) ||
      literal.text == ";" || literal.text == ":")
    refuse(written);
  const std::string_view behind = words_.peek().text;
  if (!behind.empty() && !beginsNumber(behind) && !isRelation(behind) && behind != ";")
    throw ModelError(literal.line, "products of literals (" + excerpt(literal.text) + " " +
                                       excerpt(behind) + ") are not supported");
  if (isNegated) {
    terms.constant += factor;
    factor.negate();
  }
  builder_.addTerm(terms, builder_.column(literal.text), factor);
}

LinearTerms OpbReader::readTerms() {
  LinearTerms terms;
  while (words_.peek().text != ";" && !isRelation(words_.peek().text)) readTerm(terms);
  builder_.endTerms(terms);
  return terms;
}

void OpbReader::readObjective() {
  Objective& objective = builder_.model.objective;
  const OpbWord word = words_.take();
  if (objective.exists) throw ModelError(word.line, "there are two objectives");
  if (rowNames_.size() > 0) throw ModelError(word.line, "the objective stands behind a row");
  objective.exists = true;
  objective.name = "obj";
  if (word.text == "max") objective.sense = ObjectiveSense::maximise;
  expect(":");
  LinearTerms terms = readTerms();
  expect(";");
  objective.constant = terms.constant;
  builder_.setObjective(std::move(terms));
}

void OpbReader::readRow() {
  LinearTerms terms = readTerms();
  const OpbWord relation = words_.take();
  if (!isRelation(relation.text)) refuse(relation);
  const QQ side = takeInteger() - terms.constant;
  expect(";");
  const RowSense sense = relation.text == "="    ? RowSense::equal
                         : relation.text == "<=" ? RowSense::less
                                                 : RowSense::greater;
  builder_.addRow(std::move(terms), sense, sense == RowSense::less ? -QQ::infinity() : side,
                  sense == RowSense::greater ? QQ::infinity() : side);
  rowNames_.add("R" + std::to_string(rowNames_.size() + 1));
}

Model OpbReader::read() {
  while (!words_.peek().text.empty()) {
    const OpbWord& word = words_.peek();
    if (word.text == "min" || word.text == "max") {
      readObjective();
    } else if (word.text == "soft" || word.text.starts_with('[')) {
      throw ModelError(word.line,
                       "soft constraints (" + excerpt(word.text) + ") are not supported");
    } else {
      readRow();
    }
  }
  Model& model = builder_.model;
  std::fill(model.kinds.begin(), model.kinds.end(), ColumnKind::binary);
  std::fill(model.upper.begin(), model.upper.end(), QQ(1));
  builder_.finish(std::move(rowNames_));
  return std::move(builder_.model);
}

}  // namespace

Model readOpb(std::string_view text) {
  return OpbReader(text).read();
}

}  // namespace starsift

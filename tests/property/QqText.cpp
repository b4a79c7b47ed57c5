// Printing and reading: round trips, and the parser against the grammar said plainly.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sstream>

#include "numbers/VectorQQ.h"
#include "support/generators/NumberGenerators.h"
#include "support/oracles/ParseOutcome.h"

namespace starsift {
namespace {

using test::NumberOutcome;
using test::parseOutcome;
using test::referenceParse;

std::string printed(const QQ& value) {
  std::string text;
  append(text, value);
  return text;
}

RC_GTEST_PROP(QqText, ParserReadsWhatThePrinterWrites, (const QQ& a)) {
  RC_ASSERT(QQ::parse(printed(a)) == a);
  RC_ASSERT(qqtext::parseGeneral(printed(a)) == a);
}

RC_GTEST_PROP(QqText, StreamReadsWhatItWrites, (const std::vector<QQ>& numbers)) {
  std::stringstream stream;
  for (const QQ& number : numbers) stream << number << ' ';
  for (const QQ& number : numbers) {
    QQ back;
    stream >> back;
    RC_ASSERT(back == number);
  }
}

RC_GTEST_PROP(QqText, VectorReadsWhatItWrites, (const std::vector<QQ>& numbers)) {
  Vector<QQ> vector(static_cast<Index>(numbers.size()));
  std::copy(numbers.begin(), numbers.end(), vector.begin());
  std::string text;
  appendText(text, vector, defaultDigits);
  TextCursor cursor(text);
  Vector<QQ> back;
  readVector(cursor, back);
  RC_ASSERT(identical(back, vector));
}

/// Text of characters that mean something in numbers.
rc::Gen<std::string> numberLikeText() {
  return rc::gen::container<std::string>(rc::gen::weightedElement<char>({{6, '0'},
                                                                         {6, '1'},
                                                                         {5, '5'},
                                                                         {3, '9'},
                                                                         {2, '-'},
                                                                         {1, '+'},
                                                                         {4, '.'},
                                                                         {2, ','},
                                                                         {4, '/'},
                                                                         {4, ':'},
                                                                         {1, 'e'},
                                                                         {1, 'i'},
                                                                         {1, 'n'},
                                                                         {1, 'f'},
                                                                         {1, ' '},
                                                                         {1, 'x'},
                                                                         {1, 'b'}}));
}

/// Text that looks like the numbers of problems, with a slip now and then.
rc::Gen<std::string> usualText() {
  return rc::gen::exec([] {
    const auto digits = [] { return *rc::gen::container<std::string>(rc::gen::inRange('0', ':')); };
    std::string text = *rc::gen::elementOf(std::vector<std::string>{"", "", "-", "+", " -"});
    text += digits();
    const auto parts = *rc::gen::inRange(0, 3);
    for (int i = 0; i < parts; ++i)
      text += *rc::gen::elementOf(std::vector<std::string>{".", ",", "/", ":", ":+0.", "e", "e-"}) +
              digits();
    return text;
  });
}

/// False behind a report, which costs a process.
bool assertSameOutcome(const std::string& text) {
  const NumberOutcome expected = referenceParse(text);
  if (expected.refusal == "fraction") return true;
  const bool fatal = !expected.refusal.empty() && expected.refusal != "mpz_set_str";
  const NumberOutcome outcome = parseOutcome(text, fatal);
  RC_ASSERT(outcome.refusal == expected.refusal);
  RC_ASSERT(outcome.infinity == expected.infinity);
  RC_ASSERT(outcome.value.get_str() == expected.value.get_str());
  return !fatal;
}

RC_GTEST_PROP(QqText, ParserKeepsToTheGrammar, ()) {
  for (int i = 0; i < 20 && assertSameOutcome(*numberLikeText()); ++i) {
  }
}

RC_GTEST_PROP(QqText, ParserKeepsToTheGrammarOnUsualText, ()) {
  for (int i = 0; i < 20 && assertSameOutcome(*usualText()); ++i) {
  }
}

RC_GTEST_PROP(QqText, RoadsForPlainTextAgreeWithTheGeneralOne, ()) {
  const std::string text = *usualText();
  QQ plain;
  const char* const end = text.data() + text.size();
  const bool isPlain = qqtext::scanPlain(text.data(), end, plain) == end;
  RC_PRE(isPlain);
  RC_ASSERT(plain == qqtext::parseGeneral(text));
  RC_ASSERT(test::isCanonical(plain));
}

RC_GTEST_PROP(QqText, TokensOfTextAndStreamAgree, ()) {
  const std::string number = printed(*rc::gen::arbitrary<QQ>());
  const std::string behind =
      *rc::gen::element<std::string>("", " 1", "]", "/* 1 */", "//", "ix", "x");
  const std::string text =
      *rc::gen::element<std::string>("", " ", "/* 2 */", "// 3\n") + number + behind;
  TextCursor cursor(text);
  QQ fromText;
  readToken(cursor, fromText, TokenKind::problem);
  std::istringstream stream(text);
  QQ fromStream;
  stream >> fromStream;
  RC_ASSERT(fromText == QQ::parse(number));
  RC_ASSERT(fromStream == fromText);
  stream.clear();
  RC_ASSERT(std::string(std::istreambuf_iterator<char>(stream), {}) == cursor.rest());
}

}  // namespace
}  // namespace starsift

// Number text: QQ::parse against the plain grammar, its roads for plain text
// against the general one, tokens in memory against tokens of a stream.
#include <sstream>

#include "Target.h"
#include "numbers/QQText.h"
#include "support/oracles/ReferenceNumberText.h"

namespace starsift::fuzz {

namespace {

/// The plain grammar is slow on long texts.
constexpr std::size_t mostForReference = 200;

std::string textOf(const QQ& value) {
  std::string text;
  append(text, value);
  return text;
}

mpq_class rational(const QQ& value) {
  return {mpz_class(value.numerator().get()), mpz_class(value.nenner().get())};
}

void compareWithReference(std::string_view bytes) {
  const std::string text(bytes.substr(0, bytes.find('\0')));
  const test::NumberOutcome expected = test::referenceParse(text);
  if (expected.refusal == "fraction") return;
  QQ value;
  const std::string refusal = outcomeOf([&] {
    value = QQ::parse(bytes);
    return std::string();
  });
  require(refusal == (expected.refusal.empty() ? "" : "*** " + expected.refusal),
          "the plain grammar refuses the same");
  if (!refusal.empty()) return;
  require(value.isInf() == (expected.infinity != 0), "the plain grammar knows the infinities");
  if (value.isInf())
    require(value.sign() == (expected.infinity > 0), "and their sign");
  else
    require(rational(value) == expected.value, "the plain grammar has the same value");
}

/// What a token reads as and what it leaves.
template <class Source>
std::string readAs(Source& source, TokenKind kind) {
  QQ value;
  readToken(source, value, kind);
  std::string text = textOf(value) + " before ";
  for (; source.peek() != endOfText; source.take()) text += static_cast<char>(source.peek());
  return text;
}

void compareTokens(std::string_view bytes, TokenKind kind) {
  const std::string inMemory = outcomeOf([&] {
    TextCursor source(bytes);
    return readAs(source, kind);
  });
  const std::string inStream = outcomeOf([&] {
    std::istringstream stream{std::string(bytes)};
    StreamCursor source(stream);
    return readAs(source, kind);
  });
  require(inMemory == inStream, "a stream gives the same token");
}

}  // namespace

void runTarget(std::string_view bytes) {
  if (bytes.size() <= mostForReference) compareWithReference(bytes);
  compareTokens(bytes, TokenKind::problem);
  compareTokens(bytes, TokenKind::record);
  const auto general = [](std::string_view text) { return textOf(qqtext::parseGeneral(text)); };
  require(outcomeOf([&] { return textOf(QQ::parse(bytes)); }) ==
              outcomeOf([&] { return general(bytes); }),
          "the short roads give what the general grammar gives");
  const QQ value = QQ::parse(bytes);
  require(QQ::parse(textOf(value)) == value, "a printed number reads back");
  require(QQ::parse(expandExponent(bytes)) == value, "an expanded exponent keeps the value");
}

}  // namespace starsift::fuzz

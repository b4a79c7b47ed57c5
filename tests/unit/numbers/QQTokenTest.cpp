// Number tokens of a source of characters.
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "numbers/QQText.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

/// What a token gives and what it leaves of the text.
struct Token {
  QQ value;
  std::string rest;
  friend bool operator==(const Token&, const Token&) = default;
};

void PrintTo(const Token& token, std::ostream* stream) {
  *stream << token.value << " and \"" << token.rest << '"';
}

Token fromText(const std::string& text, TokenKind kind = TokenKind::problem) {
  TextCursor cursor(text);
  Token token;
  EXPECT_TRUE(readToken(cursor, token.value, kind));
  token.rest = cursor.rest();
  return token;
}

Token fromStream(const std::string& text, TokenKind kind = TokenKind::problem) {
  std::istringstream stream(text);
  StreamCursor cursor(stream);
  Token token;
  EXPECT_TRUE(readToken(cursor, token.value, kind));
  stream.clear();
  token.rest = std::string(std::istreambuf_iterator<char>(stream), {});
  return token;
}

/// Both kinds of source give the token.
void expectToken(const std::string& text, const Token& token, TokenKind kind = TokenKind::problem) {
  EXPECT_EQ(fromText(text, kind), token) << text;
  EXPECT_EQ(fromStream(text, kind), token) << text;
}

TEST(QQToken, EndsWhereNoCharacterOfANumberStands) {
  expectToken("12 13", {QQ(12), " 13"});
  expectToken("-3]", {QQ(-3), "]"});
  expectToken("1/2|", {QQ(1, 2), "|"});
  expectToken("2:1/2\n", {QQ(5, 2), "\n"});
  expectToken("0.25", {QQ(1, 4), ""});
  expectToken("7", {QQ(7), ""});
}

TEST(QQToken, SkipsWhiteSpaceAndCommentsInFront) {
  expectToken(" \t\r\n/* a */ // b\n 5 ", {QQ(5), " "});
}

TEST(QQToken, EndsAtAComment) {
  expectToken("7/* c */", {QQ(7), "/* c */"});
  expectToken("7//8", {QQ(7), "//8"});
  expectToken("1/2// c", {QQ(1, 2), "// c"});
  expectToken("12345678901234567890/**/", {QQ(ZZ("12345678901234567890", 10)), "/**/"});
}

TEST(QQToken, Infinities) {
  expectToken("inf ", {QQ::infinity(), " "});
  expectToken("-inf]", {-QQ::infinity(), "]"});
  expectToken("infinity", {QQ::infinity(), "inity"});
}

TEST(QQToken, LetterIThatBeginsNoInfinityIsTakenAlone) {
  expectToken("5ix", {QQ(5), "x"});
  expectToken("5inx", {QQ(5), "x"});
  EXPECT_FAILS_WITH(fromText("+ind"), "QQ: parse error1");
  EXPECT_FAILS_WITH(fromStream("ix"), "QQ: parse error1");
}

TEST(QQToken, DigitsInFrontOfAnInfinityThrow) {
  EXPECT_THROW(fromText("5inf"), std::invalid_argument);
}

TEST(QQToken, HasNoExponentInAProblem) {
  expectToken("1e5", {QQ(1), "e5"});
  EXPECT_FAILS_WITH(fromText("e5"), "QQ: parse error1");
}

TEST(QQToken, HasAnExponentInARecord) {
  expectToken("1e-05 ", {QQ(1, 100000), " "}, TokenKind::record);
  expectToken("1.23457E+06]", {QQ(1234570), "]"}, TokenKind::record);
}

TEST(QQToken, NothingFails) {
  EXPECT_FAILS_WITH(fromText(""), "QQ: parse error1");
  EXPECT_FAILS_WITH(fromStream("  "), "QQ: parse error1");
  EXPECT_FAILS_WITH(fromText("xyz"), "QQ: parse error1");
  EXPECT_FAILS_WITH(fromText("/* c */"), "QQ: parse error1");
}

TEST(QQToken, OpenCommentFails) {
  EXPECT_FAILS_WITH(fromText("/* 5"), "comment is not closed");
}

TEST(QQToken, ReportsAreThoseOfTheParser) {
  EXPECT_FAILS_WITH(fromText("1.0 "), "QQ: parse error1");
  EXPECT_FAILS_WITH(fromText("1/0"), "QQ: division by zero1");
  EXPECT_FAILS_WITH(fromStream("3:5/4"), "QQ: malformed number2");
  EXPECT_THROW(fromText(".5"), std::invalid_argument);
}

TEST(QQStream, ReadsOneNumberAfterTheOther) {
  std::istringstream stream("1/2 -3 inf");
  QQ a;
  QQ b;
  QQ c;
  stream >> a >> b >> c;
  EXPECT_EQ(a, QQ(1, 2));
  EXPECT_EQ(b, QQ(-3));
  EXPECT_EQ(c, QQ::infinity());
  EXPECT_FALSE(stream.fail());
}

}  // namespace
}  // namespace starsift

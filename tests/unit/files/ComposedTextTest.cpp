#include "files/ComposedText.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace starsift {
namespace {

void nothing(const std::string& /*element*/) {}

/// The pieces in which a text of the elements, each one in parentheses, is handed on.
std::vector<std::string> pieces(const std::vector<std::string>& elements) {
  std::vector<std::string> result;
  const auto append = [](std::string& out, const std::string& element) {
    out += '(' + element + ')';
  };
  writeElements(elements, nothing, append,
                [&result](std::string_view piece) { result.emplace_back(piece); });
  return result;
}

TEST(ComposedText, ShortTextIsOnePiece) {
  EXPECT_EQ(pieces({"a", "b"}), std::vector<std::string>{"(a)(b)"});
}

TEST(ComposedText, NoElementsAreAnEmptyPiece) {
  EXPECT_EQ(pieces({}), std::vector<std::string>{""});
}

TEST(ComposedText, PiecesOfALongTextFollowEachOther) {
  std::vector<std::string> elements;
  std::string expected;
  for (int i = 0; i < 100'000; ++i) {
    elements.push_back(std::to_string(i) + std::string(50, 'x'));
    expected += '(' + elements.back() + ')';
  }
  std::string text;
  const std::vector<std::string> found = pieces(elements);
  for (const std::string& piece : found) text += piece;
  EXPECT_GT(found.size(), 3U);
  EXPECT_TRUE(text == expected);
}

TEST(ComposedText, FailureToWriteEndsTheComposition) {
  const std::vector<std::string> elements(10, std::string(1 << 20U, 'x'));
  std::size_t composed = 0;
  const auto append = [&composed](std::string& out, const std::string& element) {
    ++composed;
    out += element;
  };
  const auto write = [](std::string_view) { throw std::runtime_error("no space"); };
  EXPECT_THROW(writeElements(elements, nothing, append, write), std::runtime_error);
  EXPECT_LE(composed, piecesAhead);
}

TEST(ComposedText, FailureToComposeIsThatOfTheCaller) {
  bool isFirst = true;
  const auto compose = [&isFirst](std::string& out) {
    if (!isFirst) throw std::bad_alloc();
    isFirst = false;
    out += "first";
    return true;
  };
  std::string written;
  EXPECT_THROW(writeComposed(compose, [&written](std::string_view piece) { written += piece; }),
               std::bad_alloc);
  EXPECT_EQ(written, "first");
}

}  // namespace
}  // namespace starsift

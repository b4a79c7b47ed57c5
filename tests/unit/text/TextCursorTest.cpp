#include "text/TextCursor.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/SingleCharacterBuffer.h"

namespace starsift {
namespace {

template <class Source>
std::string takeAll(Source& source) {
  std::string text;
  for (int c = source.peek(); c != endOfText; c = source.peek()) {
    text += static_cast<char>(c);
    source.take();
  }
  return text;
}

/// Each kind of source over a text; all are to show the same characters.
struct InMemory {
  explicit InMemory(const std::string& text) : text_(text), cursor(text_) {}
  std::string text_;
  TextCursor cursor;
};
struct InStream {
  explicit InStream(const std::string& text) : stream_(text), cursor(stream_) {}
  std::istringstream stream_;
  StreamCursor cursor;
};
struct InPipe {
  explicit InPipe(const std::string& text) : buffer_(text), stream_(&buffer_), cursor(stream_) {}
  test::SingleCharacterBuffer buffer_;
  std::istream stream_;
  StreamCursor cursor;
};

template <class Kind>
class CursorOver : public ::testing::Test {};
using Kinds = ::testing::Types<InMemory, InStream, InPipe>;
TYPED_TEST_SUITE(CursorOver, Kinds);

template <class Kind>
std::string restAfterSkipping(const std::string& text) {
  Kind source(text);
  skipWithComments(source.cursor);
  return takeAll(source.cursor);
}

TYPED_TEST(CursorOver, ShowsEveryCharacterInOrder) {
  const std::string text("ab\0\xff\n", 5);
  TypeParam source(text);
  EXPECT_EQ(takeAll(source.cursor), text);
}

TYPED_TEST(CursorOver, ShowsBytesAsUnsigned) {
  TypeParam source("\xff");
  EXPECT_EQ(source.cursor.peek(), 255);
}

TYPED_TEST(CursorOver, TellsANulByteFromTheEnd) {
  TypeParam source(std::string(1, '\0'));
  EXPECT_EQ(source.cursor.peek(), 0);
  source.cursor.take();
  EXPECT_EQ(source.cursor.peek(), endOfText);
}

TYPED_TEST(CursorOver, ShowsTheSecondCharacterWithoutTakingTheFirst) {
  TypeParam source("/2");
  EXPECT_EQ(source.cursor.peekNext(), '2');
  EXPECT_EQ(source.cursor.peekNext(), '2');
  EXPECT_EQ(source.cursor.peek(), '/');
  EXPECT_EQ(takeAll(source.cursor), "/2");
}

TYPED_TEST(CursorOver, ShowsTheEndBehindTheLastCharacter) {
  TypeParam source("x");
  EXPECT_EQ(source.cursor.peekNext(), endOfText);
  EXPECT_EQ(source.cursor.peek(), 'x');
  source.cursor.take();
  EXPECT_EQ(source.cursor.peek(), endOfText);
  EXPECT_EQ(source.cursor.peekNext(), endOfText);
}

TYPED_TEST(CursorOver, SkipsWhiteSpaceOfTheFourKinds) {
  EXPECT_EQ(restAfterSkipping<TypeParam>(" \t\r\n \n[ ]"), "[ ]");
}

TYPED_TEST(CursorOver, TakesFormFeedAndVerticalTabForText) {
  EXPECT_EQ(restAfterSkipping<TypeParam>(" \f1"), "\f1");
  EXPECT_EQ(restAfterSkipping<TypeParam>(" \v1"), "\v1");
}

TYPED_TEST(CursorOver, TakesANulByteForText) {
  const std::string text("\0 1", 3);
  EXPECT_EQ(restAfterSkipping<TypeParam>(text), text);
}

TYPED_TEST(CursorOver, SkipsACommentToTheLineFeed) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("// one [ 1 ] /* \n2"), "2");
}

TYPED_TEST(CursorOver, EndsALineCommentAtTheEndOfTheText) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("// no line feed"), "");
}

TYPED_TEST(CursorOver, GoesOnThroughACarriageReturnInALineComment) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("// one\rtwo\nthree"), "three");
}

TYPED_TEST(CursorOver, SkipsACommentOverSeveralLines) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("/* a\n// b\n*/x"), "x");
}

TYPED_TEST(CursorOver, EndsACommentAtTheFirstClosingSign) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("/* /* */ */"), "*/");
}

TYPED_TEST(CursorOver, EndsACommentBehindARunOfStars) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("/****/x"), "x");
  EXPECT_EQ(restAfterSkipping<TypeParam>("/**/x"), "x");
}

TYPED_TEST(CursorOver, DoesNotCloseACommentWithItsOwnStar) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("/*/ inside */x"), "x");
}

TYPED_TEST(CursorOver, SkipsCommentsAndWhiteSpaceInAnyOrder) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("/**/ /**//**/\n// a\n// b\n\t/**/x"), "x");
}

TYPED_TEST(CursorOver, PutsALoneSlashBack) {
  EXPECT_EQ(restAfterSkipping<TypeParam>("  /x"), "/x");
  EXPECT_EQ(restAfterSkipping<TypeParam>("  / /"), "/ /");
  EXPECT_EQ(restAfterSkipping<TypeParam>("  /"), "/");
}

TYPED_TEST(CursorOver, RefusesACommentThatIsNeverClosed) {
  EXPECT_FAILS_WITH(restAfterSkipping<TypeParam>("/* a"), "comment is not closed");
  EXPECT_FAILS_WITH(restAfterSkipping<TypeParam>("/*"), "comment is not closed");
  EXPECT_FAILS_WITH(restAfterSkipping<TypeParam>("/*/"), "comment is not closed");
  EXPECT_FAILS_WITH(restAfterSkipping<TypeParam>("/* *"), "comment is not closed");
}

TYPED_TEST(CursorOver, SkipsOnlyTheCharactersItIsTold) {
  TypeParam source(" ,; ,x");
  skipWithComments(source.cursor, ", ");
  EXPECT_EQ(takeAll(source.cursor), "; ,x");
}

TYPED_TEST(CursorOver, LeavesCommentsWhereOnlyCharactersAreSkipped) {
  TypeParam source("  // a");
  skipWhiteSpace(source.cursor);
  EXPECT_EQ(takeAll(source.cursor), "// a");
}

TYPED_TEST(CursorOver, SkipsMegabytesOfCommentsAndStars) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "/**//* */ ";
  text += "/*" + std::string(2'000'000, '*') + "/x";
  EXPECT_EQ(restAfterSkipping<TypeParam>(text), "x");
}

TEST(TextCursor, KnowsWhatIsLeft) {
  TextCursor source("abc");
  source.take();
  EXPECT_EQ(source.rest(), "bc");
  source.advance(2);
  EXPECT_TRUE(source.atEnd());
  EXPECT_EQ(source.rest(), "");
}

TEST(TextCursor, StandsAtTheEndOfNoTextAtAll) {
  const TextCursor source{std::string_view()};
  EXPECT_TRUE(source.atEnd());
  EXPECT_EQ(source.peek(), endOfText);
  EXPECT_EQ(source.peekNext(), endOfText);
}

TEST(TextCursor, LooksAheadInACopy) {
  TextCursor source("ab");
  TextCursor ahead = source;
  ahead.take();
  EXPECT_EQ(source.peek(), 'a');
  EXPECT_EQ(ahead.peek(), 'b');
}

TEST(StreamCursor, LeavesTheRestInTheStream) {
  std::istringstream stream("  // a\n/rest");
  {
    StreamCursor source(stream);
    skipWithComments(source);
  }
  EXPECT_EQ(stream.get(), '/');
  EXPECT_TRUE(stream.good());
}

TEST(StreamCursor, SetsTheEndOfFileStateOnlyAtTheEnd) {
  std::istringstream stream("x");
  StreamCursor source(stream);
  source.take();
  EXPECT_FALSE(stream.eof());
  EXPECT_EQ(source.peek(), endOfText);
  EXPECT_TRUE(stream.eof());
  EXPECT_FALSE(stream.fail());
}

TEST(StreamCursor, GivesAHeldCharacterBackWhereTheStreamTakesIt) {
  std::istringstream stream("/2");
  {
    const StreamCursor source(stream);
    EXPECT_EQ(source.peekNext(), '2');
  }
  EXPECT_EQ(stream.get(), '/');
}

TEST(StreamCursor, TurnsAStreamBadRatherThanLosingACharacter) {
  test::SingleCharacterBuffer buffer("/2");
  std::istream stream(&buffer);
  {
    const StreamCursor source(stream);
    EXPECT_EQ(source.peekNext(), '2');
  }
  EXPECT_TRUE(stream.bad());
}

TEST(StreamCursor, ThrowsNothingFromItsEndUnderAnExceptionMask) {
  test::SingleCharacterBuffer buffer("/2");
  std::istream stream(&buffer);
  stream.exceptions(std::ios_base::badbit);
  {
    const StreamCursor source(stream);
    EXPECT_EQ(source.peekNext(), '2');
  }
  EXPECT_TRUE(stream.bad());
}

TEST(StreamCursor, HasNoTextInAFailedStream) {
  std::istringstream stream("abc");
  stream.setstate(std::ios_base::failbit);
  const StreamCursor source(stream);
  EXPECT_EQ(source.peek(), endOfText);
  EXPECT_EQ(source.peekNext(), endOfText);
}

TEST(StreamCursor, HasNoTextWithoutABuffer) {
  std::istream stream(nullptr);
  const StreamCursor source(stream);
  EXPECT_EQ(source.peek(), endOfText);
}

}  // namespace
}  // namespace starsift

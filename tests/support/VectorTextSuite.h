// The text form of vectors over every number type, from both kinds of source.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "core/Exceptions.h"
#include "core/VectorText.h"
#include "support/ExpectFails.h"
#include "support/SingleCharacterBuffer.h"
#include "support/TextOf.h"

namespace starsift::test {

/// The vector in the text; the three kinds of source must agree on it.
template <class T>
Vector<T> vectorIn(const std::string& text) {
  Vector<T> fromText;
  TextCursor source(text);
  readVector(source, fromText);
  const auto fromStream = readFrom<Vector<T>>(text);
  SingleCharacterBuffer buffer(text);
  std::istream pipe(&buffer);
  Vector<T> fromPipe;
  pipe >> fromPipe;
  EXPECT_EQ(textOf(fromStream), textOf(fromText));
  EXPECT_EQ(textOf(fromPipe), textOf(fromText));
  return fromText;
}

template <class T>
class VectorTextOver : public ::testing::Test {};
TYPED_TEST_SUITE_P(VectorTextOver);

TYPED_TEST_P(VectorTextOver, WritesABlankBehindEachComponent) {
  Vector<TypeParam> vector{TypeParam(1), TypeParam(-2)};
  vector[0] = TypeParam(9);
  EXPECT_EQ(textOf(vector), "[ 1 -2 ]");
  EXPECT_EQ(textOf(Vector<TypeParam>()), "[ ]");
}

TYPED_TEST_P(VectorTextOver, AppendsWhatAStreamShows) {
  std::string text = "x";
  appendText(text, Vector<TypeParam>{TypeParam(1), TypeParam(-2)}, defaultDigits);
  EXPECT_EQ(text, "x[ 1 -2 ]");
}

TYPED_TEST_P(VectorTextOver, ReadsComponentsBetweenAnyWhiteSpace) {
  EXPECT_EQ(textOf(vectorIn<TypeParam>(" \t\r\n[1\t2\r\n-3 4]")), "[ 1 2 -3 4 ]");
}

TYPED_TEST_P(VectorTextOver, ReadsAnEmptyVector) {
  EXPECT_EQ(textOf(vectorIn<TypeParam>("[ ]")), "[ ]");
  EXPECT_EQ(textOf(vectorIn<TypeParam>("[]")), "[ ]");
  EXPECT_EQ(textOf(vectorIn<TypeParam>("[ /* nothing */ ]")), "[ ]");
}

TYPED_TEST_P(VectorTextOver, ReadsOverCommentsWhereverWhiteSpaceMayStand) {
  EXPECT_EQ(textOf(vectorIn<TypeParam>("[ 1 /* c */ 2 // d\n 3 ]")), "[ 1 2 3 ]");
  EXPECT_EQ(textOf(vectorIn<TypeParam>("/**/[// a\n1/**/2/**/]")), "[ 1 2 ]");
}

TYPED_TEST_P(VectorTextOver, EndsANumberAtAComment) {
  EXPECT_EQ(textOf(vectorIn<TypeParam>("[7/* c */]")), "[ 7 ]");
  EXPECT_EQ(textOf(vectorIn<TypeParam>("[7// c\n]")), "[ 7 ]");
}

TYPED_TEST_P(VectorTextOver, ReadsInfinities) {
  const auto vector = vectorIn<TypeParam>("[ 1 -inf inf 3 ]");
  ASSERT_EQ(vector.dimension(), 4);
  EXPECT_TRUE(vector[2] == TypeParam(-NumberTraits<TypeParam>::infinity()));
  EXPECT_TRUE(vector[3] == NumberTraits<TypeParam>::infinity());
  EXPECT_TRUE(vector[4] == TypeParam(3));
}

TYPED_TEST_P(VectorTextOver, ReadsOneInfinityBehindTheOther) {
  EXPECT_EQ(vectorIn<TypeParam>("[infinf-inf]").dimension(), 3);
}

TYPED_TEST_P(VectorTextOver, NegatesTheNumberBehindTheSign) {
  EXPECT_EQ(textOf(vectorIn<TypeParam>("[ -5 --5 - 5 -+5 ]")), "[ -5 5 -5 -5 ]");
}

TYPED_TEST_P(VectorTextOver, StaysEmptyWhereNoBracketStands) {
  EXPECT_EQ(textOf(vectorIn<TypeParam>("xyz")), "[ ]");
  EXPECT_EQ(restBehind<Vector<TypeParam>>("xyz"), "xyz");
  EXPECT_EQ(restBehind<Vector<TypeParam>>(" /* c */ = [ 1 ]"), "= [ 1 ]");
}

TYPED_TEST_P(VectorTextOver, StaysEmptyAtTheEndOfTheText) {
  EXPECT_EQ(textOf(vectorIn<TypeParam>("")), "[ ]");
  EXPECT_EQ(textOf(vectorIn<TypeParam>(" // c")), "[ ]");
}

TYPED_TEST_P(VectorTextOver, ForgetsWhatItHeldBefore) {
  Vector<TypeParam> vector{TypeParam(1), TypeParam(2)};
  std::istringstream stream("xyz");
  stream >> vector;
  EXPECT_EQ(textOf(vector), "[ ]");
  TextCursor source("xyz");
  vector = Vector<TypeParam>{TypeParam(1)};
  readVector(source, vector);
  EXPECT_EQ(textOf(vector), "[ ]");
}

TYPED_TEST_P(VectorTextOver, LeavesWhatStandsBehindTheBracket) {
  EXPECT_EQ(restBehind<Vector<TypeParam>>("[ 1 ] [ 2 ]"), " [ 2 ]");
  EXPECT_EQ(restBehind<Vector<TypeParam>>("[ ]]"), "]");
}

TYPED_TEST_P(VectorTextOver, ThrowsForAFailedStreamAndIsEmptyThen) {
  std::istringstream stream("[ 1 ]");
  stream.setstate(std::ios_base::failbit);
  Vector<TypeParam> vector{TypeParam(1)};
  try {
    stream >> vector;
    FAIL() << "a failed stream was read";
  } catch (const ReadException& exception) {
    EXPECT_EQ(exception.message(), "Vector: bad stream");
  }
  EXPECT_EQ(vector.dimension(), 0);
}

TYPED_TEST_P(VectorTextOver, ThrowsForABadStream) {
  std::istringstream stream("[ 1 ]");
  stream.setstate(std::ios_base::badbit);
  Vector<TypeParam> vector;
  EXPECT_THROW(stream >> vector, ReadException);
}

TYPED_TEST_P(VectorTextOver, TakesTheEndOfFileStateAloneForNoFailure) {
  std::istringstream stream;
  stream.setstate(std::ios_base::eofbit);
  Vector<TypeParam> vector;
  EXPECT_NO_THROW(stream >> vector);
  EXPECT_EQ(vector.dimension(), 0);
}

TYPED_TEST_P(VectorTextOver, RefusesAnIThatBeginsNoInfinity) {
  EXPECT_FAILS_WITH(vectorIn<TypeParam>("[ ix ]"), "Vector: bad input2");
  EXPECT_FAILS_WITH(vectorIn<TypeParam>("[ -i ]"), "Vector: bad input2");
  EXPECT_FAILS_WITH(vectorIn<TypeParam>("[ i"), "Vector: bad input2");
  EXPECT_FAILS_WITH(vectorIn<TypeParam>("[ ind ]"), "Vector: bad input3");
  EXPECT_FAILS_WITH(vectorIn<TypeParam>("[ in"), "Vector: bad input3");
}

TYPED_TEST_P(VectorTextOver, RefusesACommentThatIsNeverClosed) {
  EXPECT_FAILS_WITH(vectorIn<TypeParam>("[ 1 /* ]"), "comment is not closed");
  EXPECT_FAILS_WITH(vectorIn<TypeParam>("/* [ 1 ]"), "comment is not closed");
}

TYPED_TEST_P(VectorTextOver, ReadsHundredThousandsOfComponents) {
  std::string text = "[";
  for (int i = 0; i < 300'000; ++i) text += "1 /**/";
  text += ']';
  Vector<TypeParam> vector;
  TextCursor source(text);
  readVector(source, vector);
  EXPECT_EQ(vector.dimension(), 300'000);
  EXPECT_EQ(readFrom<Vector<TypeParam>>(text).dimension(), 300'000);
}

REGISTER_TYPED_TEST_SUITE_P(VectorTextOver, WritesABlankBehindEachComponent,
                            AppendsWhatAStreamShows, ReadsComponentsBetweenAnyWhiteSpace,
                            ReadsAnEmptyVector, ReadsOverCommentsWhereverWhiteSpaceMayStand,
                            EndsANumberAtAComment, ReadsInfinities, ReadsOneInfinityBehindTheOther,
                            NegatesTheNumberBehindTheSign, StaysEmptyWhereNoBracketStands,
                            StaysEmptyAtTheEndOfTheText, ForgetsWhatItHeldBefore,
                            LeavesWhatStandsBehindTheBracket, ThrowsForAFailedStreamAndIsEmptyThen,
                            ThrowsForABadStream, TakesTheEndOfFileStateAloneForNoFailure,
                            RefusesAnIThatBeginsNoInfinity, RefusesACommentThatIsNeverClosed,
                            ReadsHundredThousandsOfComponents);

}  // namespace starsift::test

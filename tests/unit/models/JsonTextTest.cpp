#include "models/text/JsonText.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

std::string textOf(std::string_view value) {
  return JsonText().value(value).text();
}

TEST(JsonText, EscapesWhatMustBeEscaped) {
  EXPECT_EQ(textOf("a\"b\\c\n\x01\x7F"), "\"a\\\"b\\\\c\\u000a\\u0001\\u007f\"");
}

TEST(JsonText, KeepsUtf8) {
  EXPECT_EQ(textOf("gr\xC3\xB6\xC3\x9F"
                   "e"),
            "\"gr\xC3\xB6\xC3\x9F"
            "e\"");
}

TEST(JsonText, TakesOtherBytesAsLatin) {
  EXPECT_EQ(textOf("gr\xF6\xDF"
                   "e"),
            "\"gr\\u00f6\\u00dfe\"");
  EXPECT_EQ(textOf("\xC0\xAF"), "\"\\u00c0\\u00af\"");
  EXPECT_EQ(textOf("\xED\xA0\x80"), "\"\\u00ed\\u00a0\\u0080\"");
  EXPECT_EQ(textOf("\xF5\x80\x80\x80"), "\"\\u00f5\\u0080\\u0080\\u0080\"");
}

TEST(JsonText, SeparatesValues) {
  JsonText json;
  json.beginObject().key("a").beginArray().value(std::size_t{1}).value(true).endArray();
  json.key("b").beginObject().endObject().endObject();
  EXPECT_EQ(json.text(), "{\n  \"a\": [\n    1,\n    true\n  ],\n  \"b\": {}\n}");
}

}  // namespace
}  // namespace starsift

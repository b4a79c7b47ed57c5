#include "text/Digest.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

std::string digestOf(std::string_view text) {
  Digest digest;
  digest.add(text);
  return digest.text();
}

// The values that its authors give.
TEST(Digest, IsThatOfItsAuthors) {
  EXPECT_EQ(digestOf(""), "cbf29ce484222325");
  EXPECT_EQ(digestOf("a"), "af63dc4c8601ec8c");
  EXPECT_EQ(digestOf("foobar"), "85944171f73967e8");
}

TEST(Digest, IsThatOfAllPiecesInSequence) {
  Digest digest;
  digest.add("foo");
  digest.add("bar");
  EXPECT_EQ(digest.text(), digestOf("foobar"));
}

}  // namespace
}  // namespace starsift

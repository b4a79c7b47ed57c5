// Solutions found without the lattice, and again by it.
#include "app/DirectStars.h"

#include <gtest/gtest.h>

#include "app/StarStore.h"
#include "support/fixtures/PreparedSearch.h"

namespace starsift {
namespace {

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr std::string_view strip =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

class DirectStarsTest : public test::PreparedSearch {
 protected:
  static Star<QQ> starAt(const Vector<QQ>& x) {
    Star<QQ> star;
    static_cast<Vector<QQ>&>(star) = x;
    return star;
  }
};

TEST_F(DirectStarsTest, CountsOnceWhatTheLatticeFindsAgain) {
  prepare(strip);
  StarStore store(search_);
  DirectStars direct(search_, store);
  direct.add(starAt(Vector<QQ>{QQ(2), QQ(0)}), false);
  direct.add(starAt(Vector<QQ>{QQ(1), QQ(1)}), false);
  direct.findRepeats();
  EXPECT_EQ(direct.repeatCount(), 0);
  find({1, 1});
  find({3, 2});
  for (int i = 0; i < 2; ++i) {
    direct.findRepeats();
    EXPECT_EQ(direct.count(), 2);
    EXPECT_EQ(direct.repeatCount(), 1);
  }
}

}  // namespace
}  // namespace starsift

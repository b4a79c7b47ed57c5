// The solution file of a search, and what of it stays with the lattice.
#include "app/StarStore.h"

#include <gtest/gtest.h>

#include "support/FreshConsole.h"
#include "support/ScratchDir.h"

namespace starsift {
namespace {

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr std::string_view band =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

class StarStoreTest : public test::FreshConsole {
 protected:
  /// A search in p.opt, ready to find.
  void search(std::string_view problem) {
    search_.setFileNames(dir_.write("p.opt", problem));
    search_.useExtendedPrecision();
    search_.readOpt();
    search_.tryStandardPrecision();
    search_.normalise(true, false);
    search_.prepareLattice();
    search_.standard().params.sol = 0;
  }

  /// The search files a point, `time` seconds after its start.
  void find(const Vector<long double>& point, std::int64_t time) {
    Vector<long double> vector;
    search_.standard().opt2lat(point, vector, false, 1.0L);
    EXPECT_NE(search_.standard().checkSolution(vector, false, time, true), 0U);
  }

  test::ScratchDir dir_;
  YLattice<long double> search_;
};

TEST_F(StarStoreTest, LeavesNoStarsInTheLatticeThatIsSearched) {
  search(band);
  StarStore store(search_);
  find({1, 4}, 3);
  store.save(search_);
  EXPECT_EQ(search_.standard().stars.dimension(), 0);
  EXPECT_EQ(search_.standard().solutions.dimension(), 1);
  EXPECT_EQ(dir_.names(), (std::vector<std::string>{"p.opt", "p.sol"}));
}

}  // namespace
}  // namespace starsift

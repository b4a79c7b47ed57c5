// The solution file of a search, and what of it stays with the lattice.
#include "app/StarStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>

#include "numbers/Conversion.h"
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
    search_.withLive([](auto& lattice) { lattice.params.sol = 0; });
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

// The range of x alone is above 10^9, what a mapping in long double may safely meet.
TEST_F(StarStoreTest, TakesWhatTheLatticeInUseCanNotMap) {
  search("[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 12345678901 5 ]");
  StarStore store(search_);
  const Vector<QQ> point{QQ(1), QQ(4)};
  search_.runStep([&point](auto& lattice) {
    using Entry = std::remove_cvref_t<decltype(lattice.homValue)>;
    Vector<Entry> vector;
    Vector<Entry> x;
    x.convertFrom(point, false);
    lattice.opt2lat(x, vector, false, Entry(1));
    lattice.checkSolution(vector, false, 3, true);
  });
  ASSERT_FALSE(search_.usesExact());
  ASSERT_EQ(search_.solutionCount(), 1);
  EXPECT_THROW(search_.standard().sol2star(), PrecisionException);
  std::ostringstream report;
  EXPECT_TRUE(store.saveAndReport(search_, report));
  EXPECT_THAT(report.str(), testing::HasSubstr("x = [ 1 4 ]"));
  EXPECT_THAT(dir_.read("p.sol"), testing::StartsWith("[ 1 4 ] | 0 |"));
}

}  // namespace
}  // namespace starsift

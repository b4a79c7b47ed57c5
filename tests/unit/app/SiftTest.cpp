#include "app/Sift.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/StarRun.h"

namespace starsift {
namespace {

/// x1 + x2 <= 9, 0 <= x <= 9, minimise x1.
constexpr const char* problem =
    "[ -inf ] [ [ 1 0 ] ] [ ] [ ] [ ] [ [ 1 1 ] ] [ -inf ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 9 9 ]";

TEST(Sift, StarsThatOthersWriteMeanwhileStayBesideThoseThatWereRead) {
  const test::ScratchDir scratch;
  scratch.write("p.opt", problem);
  const std::string file = scratch.write("p.sol", "[ 1 2 ]\n[ 9 9 ]\n");
  YLattice<long double> lattice;
  std::ostringstream report;
  siftStars(lattice, file, report, [&](const ReadProgress& /*progress*/) {
    scratch.write("p.sol", "[ 3 1/3 ]\n[ 8 8 ]\n");
  });
  EXPECT_EQ(scratch.read("p.sol"),
            "[ 1 2 ] | 1 | [ 1 ] | 0 | -1 | \n[ 3 1/3 ] | 3 | [ 3 ] | 0 | -1 | \n");
  EXPECT_EQ(report.str(),
            "\nx = [ 1 2 ]\n\nTarget values: [ 1↓ ]\nTarget Norm: 1\nSlack Norm: 0\n\n---\n\n"
            "x = [ 3 1/3 ]\n\nTarget values: [ 3↓ ]\nTarget Norm: 3\nSlack Norm: 0\n");
}

TEST(Sift, FileWithoutRightStarsGoes) {
  const test::ScratchDir scratch;
  scratch.write("p.opt", problem);
  EXPECT_EQ(test::siftedReport(scratch.write("p.sol", "[ 9 9 ]\n")), "\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.opt"});
}

}  // namespace
}  // namespace starsift

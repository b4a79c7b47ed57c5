// A fixture: the search in a problem file, as far as it goes without reducing.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "lattice/YLattice.h"
#include "support/FreshConsole.h"
#include "support/ScratchDir.h"

namespace starsift::test {

/// A folder with p.opt and the lattice prepared from it, which counts all solutions.
class PreparedSearch : public FreshConsole {
 protected:
  /// Prepares the search in p.opt, which finds nothing yet.
  void prepare(std::string_view problem) {
    search_.setFileNames(dir_.write("p.opt", problem));
    search_.useExtendedPrecision();
    search_.readOpt();
    search_.tryStandardPrecision();
    search_.normalise(true, false);
    search_.prepareLattice();
    search_.withLive([](auto& lattice) { lattice.params.sol = 0; });
    ASSERT_EQ(search_.solutionCount(), 0);
  }

  /// The search files a point, `time` seconds after its start.
  void find(const Vector<long double>& point, std::int64_t time = 3) {
    Vector<long double> vector;
    search_.standard().opt2lat(point, vector, false, 1.0L);
    EXPECT_NE(search_.standard().checkSolution(vector, false, time, true), 0U);
  }

  std::string solFile() const { return dir_.read("p.sol"); }

  ScratchDir dir_;
  YLattice<long double> search_;
};

}  // namespace starsift::test

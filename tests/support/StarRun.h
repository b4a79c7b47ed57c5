// The run of the command in this process, on files in a directory.
#pragma once

#include <sstream>
#include <string>

#include "app/Sift.h"
#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "files/StarCheck.h"
#include "files/StarOrder.h"
#include "lattice/Lattice.h"
#include "problem/OptReader.h"

namespace starsift::test {

/// What the command prints, but for its last line end.
inline std::string siftedReport(const std::string& solFile) {
  std::ostringstream report;
  YLattice<long double> lattice;
  siftStars(lattice, solFile, report);
  return report.str();
}

/// The same over rationals from start to end.
inline void siftStarsExactly(const std::string& solFile) {
  Lattice<QQ, long double> lattice;
  lattice.setFileNames(solFile);
  readOpt(lattice.optOriginal);
  lattice.readStarsFromSolFile(false);
  lattice.checkStars();
  sortStars(lattice.stars);
  removeDuplicates(lattice.stars, true);
  lattice.outputSwitch = true;
  lattice.writeSolFile(true);
}

}  // namespace starsift::test

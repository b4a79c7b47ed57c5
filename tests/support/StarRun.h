// The run of the command in this process, on files in a directory.
#pragma once

#include <string>

#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "files/StarCheck.h"
#include "files/StarOrder.h"
#include "lattice/YLattice.h"
#include "problem/OptReader.h"

namespace starsift::test {

/// What the command prints, but for its last line end.
inline std::string siftStars(const std::string& solFile) {
  YLattice<long double> lattice;
  lattice.setFileNames(solFile);
  lattice.useExtendedPrecision();
  lattice.readOpt();
  lattice.tryStandardPrecision();
  lattice.useExtendedPrecision();
  lattice.readStarsFromSolFile(false);
  lattice.tryStandardPrecision();
  lattice.checkStars();
  lattice.sortStars();
  lattice.removeDuplicates(true);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile();
  lattice.sortStars();
  lattice.removeDuplicates(false);
  return lattice.solutionsText();
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
  lattice.writeSolFile();
}

}  // namespace starsift::test

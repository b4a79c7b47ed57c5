#include "app/Sift.h"

namespace starsift {

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  lattice.tryStandardPrecision();
  lattice.readStarsExactly(false);
  lattice.checkStars();
  lattice.sortStars();
  lattice.removeDuplicates(true);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(true);
  // The file keeps stars that differ in their parameters; the report doesn't.
  lattice.sortStars();
  lattice.removeDuplicates(false);
  lattice.writeSolutions(report);
}

}  // namespace starsift

#include "app/Sift.h"

namespace starsift {

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  lattice.tryStandardPrecision();
  lattice.readStarsExactly(false);
  saveStars(lattice, report);
}

void saveStars(YLattice<long double>& lattice, std::ostream& report) {
  cleanStars(lattice);
  writeStars(lattice);
  // The file keeps stars that differ in their parameters; the report doesn't.
  lattice.sortStars();
  lattice.removeDuplicates(false);
  lattice.writeSolutions(report);
}

void writeStars(YLattice<long double>& lattice) {
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(true);
}

void cleanStars(YLattice<long double>& lattice) {
  lattice.checkStars();
  lattice.sortStars();
  lattice.removeDuplicates(true);
}

}  // namespace starsift

#include "app/Sift.h"

namespace starsift {

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  lattice.tryStandardPrecision();
  lattice.readStarsExactly(false);
  cleanStars(lattice);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(true);
  reportStars(lattice, report);
}

void reportStars(YLattice<long double>& lattice, std::ostream& report) {
  // The file keeps stars that differ in their parameters; the report doesn't.
  lattice.sortStars();
  lattice.removeDuplicates(Duplicates::ofPoint);
  lattice.writeSolutions(report);
}

void cleanStars(YLattice<long double>& lattice) {
  lattice.checkStars();
  lattice.sortStars();
  lattice.removeDuplicates(Duplicates::ofPointAndParams);
}

}  // namespace starsift

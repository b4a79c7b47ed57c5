#include "app/Sift.h"

namespace starsift {

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  lattice.tryStandardPrecision();
  lattice.readStarsExactly(StarReading::append);
  lattice.checkStars();
  tidyStars(lattice);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(Stars::asTheyAre);
  reportStars(lattice, report);
}

}  // namespace starsift

#include "app/Sift.h"

#include "app/SolutionLock.h"
#include "system/Failure.h"

namespace starsift {

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  lattice.tryStandardPrecision();
  const SolutionLock lock(solFile, Patience::whileHolderWorks);
  if (!lock.isGranted()) fail("Could not lock file: " + solFile);
  lattice.readStarsExactly(StarReading::append);
  lattice.checkStars();
  tidyStars(lattice);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(Stars::asTheyAre);
  reportStars(lattice, report);
}

}  // namespace starsift

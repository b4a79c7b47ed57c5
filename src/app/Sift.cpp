#include "app/Sift.h"

#include "app/SolutionLock.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Reads, checks and rewrites the file under its lock, which is free again before the report: a
/// reader of that may take its time.
void siftFile(YLattice<long double>& lattice, const std::string& solFile) {
  const SolutionLock lock(solFile, Patience::whileHolderWorks);
  if (!lock.isGranted()) fail("Could not lock file: " + solFile);
  lattice.readStarsExactly(StarReading::append);
  lattice.checkStars();
  tidyStars(lattice);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(Stars::asTheyAre);
}

}  // namespace

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  lattice.tryStandardPrecision();
  siftFile(lattice, solFile);
  reportStars(lattice, report);
}

}  // namespace starsift

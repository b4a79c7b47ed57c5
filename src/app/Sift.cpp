#include "app/Sift.h"

#include <optional>

#include "app/SolutionLock.h"
#include "files/LineFile.h"
#include "files/WriteOrFail.h"
#include "system/Failure.h"

namespace starsift {

namespace {

using Watch = std::function<void(const ReadProgress&)>;

/// False if others have changed the file since it was read.
bool write(const LineFile& lines, const std::string& solFile) {
  return writeOrFail([&] { return lines.write(solFile) != Commit::changed; });
}

/// Checks and rewrites the file by way of the lattice, whatever its stars are like; adds those of
/// `lines`, if there are any.
void siftInLattice(YLattice<long double>& lattice, const std::optional<LineFile>& lines) {
  lattice.tryStandardPrecision();
  lattice.readStarsExactly(StarReading::append);
  if (lines) lattice.runStep([&lines](auto& live) { live.file.appendLines(lines->lines()); });
  lattice.checkStars();
  tidyStars(lattice);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(Stars::asTheyAre);
}

/// Reads, checks and rewrites the file under its lock, which is free again before the report: a
/// reader of that may take its time. Nothing if the stars are in the lattice afterwards.
std::optional<LineFile> siftFile(YLattice<long double>& lattice, const std::string& solFile,
                                 const Watch& watch) {
  const SolutionLock lock(solFile, Patience::whileHolderWorks);
  if (!lock.isGranted()) fail("Could not lock file: " + solFile);
  std::optional<LineFile> lines = LineFile::read(solFile, lattice.problemAsRead(), watch);
  if (lines && write(*lines, solFile)) return lines;
  siftInLattice(lattice, lines);
  return std::nullopt;
}

}  // namespace

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report,
               const std::function<void(const ReadProgress&)>& watch) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  std::optional<LineFile> lines = siftFile(lattice, solFile, watch);
  if (lines)
    lines->report(report, lattice.problemAsRead().dt);
  else
    reportStars(lattice, report);
}

}  // namespace starsift

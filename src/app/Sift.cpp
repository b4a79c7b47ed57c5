#include "app/Sift.h"

#include <optional>
#include <utility>

#include "app/SolutionLock.h"
#include "files/FileNames.h"
#include "files/LineFile.h"
#include "files/SolutionFile.h"
#include "files/WriteOrFail.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// False if others have changed the file since it was read.
bool write(const LineFile& lines, const std::string& solFile) {
  return writeOrFail([&] { return lines.write(solFile) != Commit::changed; });
}

/// The problem beside the stars. The numbers of both files are rationals, so they are read exactly.
Vanu<QQ> readProblem(const std::string& solFile) {
  SolutionFile<QQ> file;
  file.setPaths(fileNames(solFile));
  file.readProblem();
  return std::move(file.editProblem());
}

/// Checks and rewrites the file by way of the lattice, whatever its stars are like; adds those of
/// `lines`, if there are any.
void siftInLattice(YLattice<long double>& lattice, const std::string& solFile,
                   const std::optional<LineFile>& lines) {
  lattice.setFileNames(solFile);
  lattice.useExtendedPrecision();
  // Read again: where lines do, the rows of the problem would take more than the file.
  lattice.readOpt();
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
                                 Vanu<QQ> problem, const LineFile::Watch& watch) {
  const SolutionLock lock(solFile, Patience::whileHolderWorks);
  if (!lock.isGranted()) fail("Could not lock file: " + solFile);
  std::optional<LineFile> lines = LineFile::read(solFile, std::move(problem), watch);
  if (lines && write(*lines, solFile)) return lines;
  siftInLattice(lattice, solFile, lines);
  return std::nullopt;
}

}  // namespace

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report,
               const std::function<void(const ReadProgress&)>& watch) {
  Vanu<QQ> problem = readProblem(solFile);
  std::optional<LineFile> lines = siftFile(lattice, solFile, std::move(problem), watch);
  if (lines)
    lines->report(report);
  else
    reportStars(lattice, report);
}

}  // namespace starsift

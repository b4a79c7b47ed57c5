#include "app/Sift.h"

#include <algorithm>
#include <optional>
#include <thread>
#include <utility>

#include "app/SolutionLock.h"
#include "files/Report.h"
#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "files/StarLines.h"
#include "numbers/Conversion.h"
#include "problem/Exactness.h"
#include "stars/LineOrder.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

namespace {

using Watch = std::function<void(const ReadProgress&)>;

/// The right stars of a solution file, sorted and without duplicates, and what they refer to.
struct TidyLines {
  InputText input;
  std::optional<FileIdentity> identity;
  StarLines stars;
  /// The numbers have the form of long double.
  bool isStandard;
};

/// Right stars and whether they have the form of long double.
struct RightStars {
  StarLines stars;
  bool isStandard;
};

/// Nothing if the stars can't be held as lines.
std::optional<RightStars> readRightStars(const InputText& input, const Vanu<QQ>& problem,
                                         const Watch& watch) {
  const unsigned threads = std::max(std::thread::hardware_concurrency(), 1U);
  const auto result = [](std::optional<StarLines> stars, bool isStandard) {
    return stars ? std::optional(RightStars{std::move(*stars), isStandard}) : std::nullopt;
  };
  if (fitsLongDouble(problem)) {
    try {
      return result(readRightStars<long double>(input, problem, threads, watch), true);
    } catch (const PrecisionException&) {
      // A star that stays needs exact numbers, so that all have their form.
    }
  }
  return result(readRightStars<QQ>(input, problem, threads, watch), false);
}

/// Nothing if the stars can't be held as lines, or there is no file.
std::optional<TidyLines> readTidyLines(const Vanu<QQ>& problem, const std::string& solFile,
                                       const Watch& watch) {
  const std::optional<FileIdentity> identity = fileIdentity(solFile);
  std::optional<InputText> input = readSolText(solFile);
  if (!input) return std::nullopt;
  std::optional<RightStars> right = readRightStars(*input, problem, watch);
  if (!right || !sortLines(right->stars.lines)) return std::nullopt;
  removeDuplicates(right->stars.lines, true);
  return TidyLines{std::move(*input), identity, std::move(right->stars), right->isStandard};
}

/// False if others have changed the file since it was read.
bool write(const TidyLines& lines, const std::string& solFile) {
  try {
    return writeLines(solFile, lines.stars.lines, lines.identity).commit != Commit::changed;
  } catch (const WriteException& exception) {
    fail(exception.message());
  } catch (const LinkException& exception) {
    fail(exception.message());
  }
}

/// Adds the stars of the lines to those of the lattice.
void addStars(YLattice<long double>& lattice, const StarLines& lines) {
  Array<Star<QQ>> stars;
  for (const StarLine& line : lines.lines) {
    const std::string text = std::string(line.x()).append(line.rest());
    TextCursor source(text);
    Star<QQ> star;
    readStar(star, source);
    append(stars, std::move(star));
  }
  lattice.runStep([&stars]<class T, class R>(Lattice<T, R>& live) {
    Array<Star<T>> added;
    added.resize(stars.dimension(), false);
    for (Index i = 1; i <= stars.dimension(); ++i) added[i].convertFrom(stars[i], false);
    live.file.appendStars(std::move(added));
  });
}

/// Checks and rewrites the file by way of the lattice, whatever its stars are like.
void siftInLattice(YLattice<long double>& lattice, const StarLines* more) {
  lattice.tryStandardPrecision();
  lattice.readStarsExactly(StarReading::append);
  if (more != nullptr) addStars(lattice, *more);
  lattice.checkStars();
  tidyStars(lattice);
  lattice.setOutputSwitch(true);
  lattice.writeSolFile(Stars::asTheyAre);
}

/// Reads, checks and rewrites the file under its lock, which is free again before the report: a
/// reader of that may take its time. Nothing if the stars are in the lattice afterwards.
std::optional<TidyLines> siftFile(YLattice<long double>& lattice, const std::string& solFile,
                                  const Watch& watch) {
  const SolutionLock lock(solFile, Patience::whileHolderWorks);
  if (!lock.isGranted()) fail("Could not lock file: " + solFile);
  std::optional<TidyLines> lines = readTidyLines(lattice.problemAsRead(), solFile, watch);
  if (lines && write(*lines, solFile)) return lines;
  siftInLattice(lattice, lines ? &lines->stars : nullptr);
  return std::nullopt;
}

void reportLines(TidyLines& lines, const Vector<QQ>& goals, std::ostream& report) {
  removeDuplicates(lines.stars.lines, false);
  if (!lines.isStandard) return writeSolutions(report, lines.stars.lines, goals);
  Vector<long double> rounded;
  rounded.convertFrom(goals, false);
  writeSolutions(report, lines.stars.lines, rounded);
}

}  // namespace

void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report,
               const std::function<void(const ReadProgress&)>& watch) {
  lattice.setFileNames(solFile);
  // The numbers of both files are rationals, so they are read exactly.
  lattice.useExtendedPrecision();
  lattice.readOpt();
  std::optional<TidyLines> lines = siftFile(lattice, solFile, watch);
  if (lines)
    reportLines(*lines, lattice.problemAsRead().dt, report);
  else
    reportStars(lattice, report);
}

}  // namespace starsift

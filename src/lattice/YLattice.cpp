#include "lattice/YLattice.h"

#include <iostream>

#include "files/StarOrder.h"
#include "problem/OptReader.h"

namespace starsift {

namespace {

/// The level of `verb` from which the wrapper reports what it does.
constexpr long reportingLevel = 2;

}  // namespace

template <class R>
void YLattice<R>::useExtendedPrecision() {
  if (useExact_) return;
  if (standard_.params.verb >= reportingLevel)
    report(std::cout, "Switching to extended lattice precision");
  exact_.assignFrom(standard_, false);
  useExact_ = true;
  standard_.releaseFiles();
}

template <class R>
void YLattice<R>::useStandardPrecision() {
  if (!useExact_) return;
  standard_.assignFrom(exact_, false);
  useExact_ = false;
  exact_.releaseFiles();
  if (standard_.params.verb >= reportingLevel)
    report(std::cout, "Using standard lattice precision");
}

template <class R>
void YLattice<R>::tryStandardPrecision() {
  try {
    useStandardPrecision();
  } catch (const PrecisionException&) {
    // A number needs more than long double: the exact lattice stays live.
    standard_.releaseFiles();
  }
}

/// Closes the console block that the failed step left open and makes the exact
/// lattice the live one.
template <class R>
void YLattice<R>::failOver(Index depth) {
  if (exact_.params.verb >= reportingLevel) {
    std::cout << endLine() << closeStamp(true);
    stampOutputTime();
  }
  useExtendedPrecision();
  setConsoleDepth(depth);
}

template <class R>
void YLattice<R>::normalise(bool generate, bool force) {
  runStep([generate, force](auto& lattice) { lattice.normalise(generate, force); });
}

template <class R>
bool YLattice<R>::readStarsFromSolFile(bool peek) {
  return runStep([peek](auto& lattice) { return lattice.readStarsFromSolFile(peek); },
                 OnFailure::unchanged);
}

template <class R>
bool YLattice<R>::readStarsExactly(bool peek) {
  return runStep([peek](auto& lattice) { return lattice.readStarsExactly(peek); },
                 OnFailure::unchanged);
}

template <class R>
bool YLattice<R>::checkStars() {
  return runStep([](auto& lattice) { return lattice.checkStars(); }, OnFailure::unchanged);
}

template <class R>
void YLattice<R>::writeSolFile(bool complete) {
  runStep([complete](auto& lattice) { lattice.writeSolFile(complete); }, OnFailure::unchanged);
}

template <class R>
std::string YLattice<R>::solutionsText() {
  return runStep([](const auto& lattice) { return lattice.solutionsText(); }, OnFailure::unchanged);
}

template <class R>
void YLattice<R>::setFileNames(const std::string& path) {
  standard_.setFileNames(path);
}

template <class R>
void YLattice<R>::readOpt() {
  starsift::readOpt(exact_.optOriginal);
}

template <class R>
void YLattice<R>::sortStars() {
  withLive([](auto& lattice) { starsift::sortStars(lattice.stars); });
}

template <class R>
void YLattice<R>::removeDuplicates(bool compareParams) {
  withLive(
      [compareParams](auto& lattice) { starsift::removeDuplicates(lattice.stars, compareParams); });
}

template <class R>
void YLattice<R>::writeSolutions(std::ostream& stream) const {
  withLive([&stream](const auto& lattice) { lattice.writeSolutions(stream); });
}

template <class R>
void YLattice<R>::setOutputSwitch(bool on) {
  withLive([on](auto& lattice) { lattice.outputSwitch = on; });
}

template class YLattice<long double>;

}  // namespace starsift

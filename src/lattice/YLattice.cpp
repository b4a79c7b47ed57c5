#include "lattice/YLattice.h"

#include <ctime>
#include <iostream>
#include <memory>
#include <utility>

#include "numbers/Conversion.h"
#include "params/ParamArguments.h"
#include "problem/Exactness.h"
#include "problem/OptReader.h"
#include "problem/TightenBounds.h"
#include "stars/StarOrder.h"

namespace starsift {

namespace {

/// The level of `verb` from which the wrapper reports what it does.
constexpr long reportingLevel = 2;

/// Lets a lattice write files as long as it lives.
class OutputOn {
 public:
  explicit OutputOn(bool& output) : output_(output), before_(std::exchange(output, true)) {}
  OutputOn(const OutputOn&) = delete;
  OutputOn& operator=(const OutputOn&) = delete;
  ~OutputOn() { output_ = before_; }

 private:
  bool& output_;
  bool before_;
};

}  // namespace

template <class R>
YLattice<R>::YLattice() = default;

template <class R>
YLattice<R>::~YLattice() = default;

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
bool YLattice<R>::prepareLattice() {
  return runStep([](auto& lattice) { return lattice.prepareLattice(); });
}

template <class R>
void YLattice<R>::sortBasis(Index count) {
  runStep([count](auto& lattice) { lattice.sortBasis(count); });
}

template <class R>
PassCounts YLattice<R>::lllPass(Index from, Index to, Index kmax) {
  return runStep([from, to, kmax](auto& lattice) {
    lattice.lllPass(from, to, kmax);
    return lattice.lastPass;
  });
}

template <class R>
void YLattice<R>::restartHandling(bool finished) {
  runStep([finished](auto& lattice) { lattice.restartHandling(finished); });
}

template <class R>
void YLattice<R>::saveLattice() {
  runStep([](auto& lattice) {
    if (lattice.latticeKind != LatticeKind::full) return;
    const OutputOn output(lattice.outputSwitch);
    lattice.verifyTransformation(false, false);
  });
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
WrittenFile YLattice<R>::writeStarsTo(const std::string& path) {
  return runStep([&path](const auto& lattice) { return writeStars(path, lattice.stars); },
                 OnFailure::unchanged);
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
bool YLattice<R>::equationsHoldExactly() const {
  return starsift::equationsHoldExactly(exact_.optOriginal);
}

template <class R>
void YLattice<R>::tightenBounds() {
  starsift::tightenBounds(exact_.optOriginal);
}

template <class R>
void YLattice<R>::readParams(const std::vector<std::string>& arguments) {
  readArguments(exact_.params, arguments);
}

template <class R>
void YLattice<R>::takeProblem(const YLattice& other) {
  other.withLive([this](const auto& source) {
    setFileNames(source.solFile);
    useExtendedPrecision();
    exact_.optOriginal.convertFrom(source.problemAsRead());
  });
}

template <class R>
std::string YLattice<R>::starsText() const {
  std::string text;
  withLive([&text](const auto& lattice) {
    for (const auto& star : lattice.stars) {
      Star<QQ> exact;
      exact.convertFrom(star, false);
      text += starText(exact) + '\n';
    }
  });
  return text;
}

template <class R>
void YLattice<R>::addStars(Array<Star<QQ>> added) {
  useExtendedPrecision();
  const Index before = exact_.stars.dimension();
  exact_.stars.resize(before + added.dimension(), true);
  std::move(added.begin(), added.end(), exact_.stars.begin() + before);
  tryStandardPrecision();
}

template <class R>
Array<Star<QQ>> YLattice<R>::solutionStars() const {
  return withLive([](const auto& lattice) {
    const auto beside = std::make_unique<Exact>();
    beside->assignFrom(lattice, false);
    return beside->solutionStars();
  });
}

template <class R>
void YLattice<R>::beginSearch(ReductionObserver& observer,
                              std::chrono::steady_clock::duration elapsed) {
  standard_.observer = &observer;
  exact_.observer = &observer;
  // By the clock that is read for the times: another one may be some milliseconds ahead, and
  // -1 stands for an unknown time.
  const std::time_t start =
      std::time(nullptr) - std::chrono::duration_cast<std::chrono::seconds>(elapsed).count();
  withLive([start](auto& lattice) {
    using enum MainMutexVariable;
    lattice.runVariables[startTime].set(std::to_string(start));
    lattice.params.stopping = true;
    lattice.terminationSwitch = true;
    lattice.outputSwitch = false;
  });
}

template <class R>
void YLattice<R>::endSearch() {
  standard_.observer = nullptr;
  exact_.observer = nullptr;
}

template <class R>
bool YLattice<R>::stopped() const {
  return withLive([](const auto& lattice) { return lattice.stopped(); });
}

template <class R>
bool YLattice<R>::isSatisfied() const {
  return withLive([](const auto& lattice) { return lattice.isSatisfied(); });
}

template <class R>
Index YLattice<R>::solutionCount() const {
  return withLive([](const auto& lattice) { return lattice.solutions.dimension(); });
}

template <class R>
Index YLattice<R>::restarts() const {
  return withLive([](const auto& lattice) { return lattice.restarts; });
}

template <class R>
bool YLattice<R>::hasStars() const {
  return withLive([](const auto& lattice) { return lattice.stars.isSet(); });
}

template <class R>
bool YLattice<R>::hasTargets() const {
  return withLive([](const auto& lattice) { return lattice.problemAsRead().dt.isSet(); });
}

template <class R>
const Params& YLattice<R>::params() const {
  return useExact_ ? static_cast<const Params&>(exact_.params) : standard_.params;
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

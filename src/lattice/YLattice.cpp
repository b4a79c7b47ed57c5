#include "lattice/YLattice.h"

#include <ctime>
#include <ostream>
#include <utility>

#include "numbers/Conversion.h"
#include "params/ParamArguments.h"
#include "system/Console.h"

namespace starsift {

namespace {

/// The level of `verb` from which changes of precision are reported.
constexpr long reportingLevel = 2;

/// Turns the output switch on for its lifetime.
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

void SwitchReports::say(long verb, const char* message) {
  if (verb >= reportingLevel) report(reportStream(), message);
}

void SwitchReports::closeBlock(long verb) {
  if (verb < reportingLevel) return;
  reportStream() << endLine() << closeStamp(true);
  stampOutputTime();
}

template <class R>
YLattice<R>::YLattice() = default;

template <class R>
YLattice<R>::~YLattice() = default;

template <class R>
void YLattice<R>::normalise(TargetRange range, From from) {
  runStep([range, from](auto& lattice) { lattice.normalise(range, from); });
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
    return lattice.run.lastPass;
  });
}

template <class R>
void YLattice<R>::restartHandling(Outcome outcome) {
  // A new lattice is made beside the old one; only the writing of files works on the old one.
  const bool writes = withLive([](const auto& lattice) { return lattice.run.outputSwitch; });
  runStep([outcome](auto& lattice) { lattice.restartHandling(outcome); },
          writes ? OnFailure::restore : OnFailure::unchanged);
}

template <class R>
void YLattice<R>::saveLattice() {
  const bool isMade =
      withLive([](const auto& lattice) { return lattice.frame.latticeKind == LatticeKind::full; });
  if (!isMade) return;
  runStep([](auto& lattice) {
    const OutputOn output(lattice.run.outputSwitch);
    lattice.verifyTransformation(LatticeKind::full, Announce::full);
  });
}

template <class R>
bool YLattice<R>::readStarsFromSolFile(StarReading reading) {
  return runStep([reading](auto& lattice) { return lattice.readStarsFromSolFile(reading); },
                 OnFailure::unchanged);
}

template <class R>
bool YLattice<R>::readStarsExactly(StarReading reading) {
  return runStep([reading](auto& lattice) { return lattice.readStarsExactly(reading); },
                 OnFailure::unchanged);
}

template <class R>
bool YLattice<R>::checkStars() {
  return runStep([](auto& lattice) { return lattice.checkStars(); }, OnFailure::unchanged);
}

template <class R>
void YLattice<R>::writeSolFile(Stars what) {
  runStep([what](auto& lattice) { lattice.writeSolFile(what); }, OnFailure::unchanged);
}

template <class R>
std::string YLattice<R>::solutionsText() {
  return runStep([](const auto& lattice) { return lattice.solutionsText(); }, OnFailure::unchanged);
}

template <class R>
void YLattice<R>::setFileNames(const std::string& path) {
  withLive([&path](auto& lattice) { lattice.setFileNames(path); });
}

template <class R>
void YLattice<R>::readOpt() {
  exact().file.readProblem();
  exact().optOriginal = Vanu<QQ>();
}

template <class R>
void YLattice<R>::takeProblem(const Vanu<QQ>& problem) {
  exact().file.editProblem() = problem;
  exact().optOriginal = Vanu<QQ>();
}

template <class R>
const Vanu<QQ>& YLattice<R>::problemAsRead() const {
  if (!usesExact()) fail("The exact precision is not in use");
  return exact().file.problem();
}

template <class R>
bool YLattice<R>::tightenBounds() {
  return exact().tightenBounds();
}

template <class R>
void YLattice<R>::readParams(const std::vector<std::string>& arguments) {
  readArguments(exact().params, arguments);
  exact().followParams();
}

template <class R>
Array<Star<QQ>> YLattice<R>::starsFiledAfter(Index last) const {
  return withLive([last](const auto& lattice) { return lattice.starsFiledAfter(last); });
}

template <class R>
Index YLattice<R>::lastFiled() const {
  return withLive([](const auto& lattice) { return lattice.found.lastFiled; });
}

template <class R>
void YLattice<R>::beginSearch(ReductionObserver& observer,
                              std::chrono::steady_clock::duration elapsed) {
  lattices_.withBoth([&observer](auto& lattice) { lattice.run.observer = &observer; });
  // By the clock that discovery times are read from: another clock may be some milliseconds
  // ahead, and -1 stands for an unknown time.
  const std::time_t start =
      std::time(nullptr) - std::chrono::duration_cast<std::chrono::seconds>(elapsed).count();
  withLive([start](auto& lattice) {
    using enum MainMutexVariable;
    lattice.run.runVariables[startTime].set(std::to_string(start));
    lattice.params.stopping = true;
    lattice.run.terminationSwitch = true;
    lattice.run.outputSwitch = false;
  });
}

template <class R>
void YLattice<R>::setSeed(std::uint64_t seed) {
  withLive([seed](auto& lattice) { lattice.run.seed = seed; });
}

template <class R>
std::uint64_t YLattice<R>::seed() const {
  return withLive([](const auto& lattice) { return lattice.run.seed; });
}

template <class R>
bool YLattice<R>::seeksBest() const {
  return withLive([](const auto& lattice) { return lattice.run.seeksBest; });
}

template <class R>
void YLattice<R>::seekBest() {
  withLive([](auto& lattice) { lattice.run.seeksBest = true; });
}

template <class R>
void YLattice<R>::endSearch() {
  lattices_.withBoth([](auto& lattice) { lattice.run.observer = nullptr; });
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
bool YLattice<R>::meetsNorms(const Star<QQ>& star) const {
  return withLive([&star](const auto& lattice) { return lattice.meetsNorms(star); });
}

template <class R>
std::string YLattice<R>::paramsText() const {
  return withLive([](const auto& lattice) { return lattice.paramsText(); });
}

template <class R>
void YLattice<R>::signStar(Star<QQ>& star, const std::string& paramsText) const {
  withLive([&](const auto& lattice) { lattice.signStar(star, paramsText); });
}

template <class R>
std::string YLattice<R>::statusText(const Array<Star<QQ>>& others, Index further) const {
  return withLive(
      [&others, further](const auto& lattice) { return lattice.statusText(others, further); });
}

template <class R>
Index YLattice<R>::solutionCount() const {
  return withLive([](const auto& lattice) { return lattice.found.solutions.dimension(); });
}

template <class R>
Index YLattice<R>::restarts() const {
  return withLive([](const auto& lattice) { return lattice.run.restarts; });
}

template <class R>
bool YLattice<R>::hasStars() const {
  return withLive([](const auto& lattice) { return lattice.file.stars.isSet(); });
}

template <class R>
std::uint64_t YLattice<R>::problemNumber() const {
  return withLive([](const auto& lattice) { return lattice.file.problemNumber(); });
}

template <class R>
bool YLattice<R>::hasTargets() const {
  return withLive([](const auto& lattice) { return lattice.file.problem().dt.isSet(); });
}

template <class R>
const Params& YLattice<R>::params() const {
  const Params* params = nullptr;
  withLive([&params](const auto& lattice) { params = &lattice.params; });
  return *params;
}

template <class R>
void YLattice<R>::sortStars() {
  withLive([](auto& lattice) { lattice.file.sortStars(); });
}

template <class R>
void YLattice<R>::removeDuplicates(Duplicates duplicates) {
  withLive([duplicates](auto& lattice) { lattice.file.removeDuplicates(duplicates); });
}

template <class R>
void YLattice<R>::writeSolutions(std::ostream& stream) const {
  withLive([&stream](const auto& lattice) { lattice.writeSolutions(stream); });
}

template <class R>
void YLattice<R>::setOutputSwitch(bool on) {
  withLive([on](auto& lattice) { lattice.run.outputSwitch = on; });
}

template class YLattice<long double>;

}  // namespace starsift

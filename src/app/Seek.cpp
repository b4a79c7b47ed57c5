#include "app/Seek.h"

#include <iostream>
#include <string_view>

#include "app/ProofRemark.h"
#include "app/StarStore.h"
#include "params/ParamHelp.h"
#include "search/SearchPass.h"
#include "system/Console.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Restarts without a new solution that end a search without limits.
constexpr Index fruitlessRestarts = 20;

/// The parameters say when the search ends. Norms end it only if there are targets.
bool isLimited(const YLattice<long double>& lattice) {
  const Params& params = lattice.params();
  if (params.hasPassOrTimeLimit() || params.sol > 1) return true;
  return lattice.hasTargets() &&
         lattice.withLive([](const auto& live) { return live.params.hasNormLimit(); });
}

std::string_view reasonText(SearchEnd end) {
  switch (end) {
    case SearchEnd::goal:
      return "goal reached";
    case SearchEnd::passes:
      return "number of passes reached";
    case SearchEnd::time:
      return "time is over";
    case SearchEnd::fruitless:
      return "nothing new for long";
    case SearchEnd::interrupt:
      return "interrupted";
    case SearchEnd::overflow:
      return "numbers too large";
  }
  return "";
}

}  // namespace

Seek::Seek(YLattice<long double>& lattice, SearchWatch& watch, std::ostream& report)
    : lattice_(lattice), watch_(watch), report_(report) {
  const Params& params = lattice.params();
  passLimit_ = params.iters;
  watch.setTimeLimit(params.rtime.get());
  setExtendedOutput(params.verb == 2);
  reportWithoutEffect(params);
}

SearchEnd Seek::run() {
  lattice_.readOpt();
  setEquationsExact(lattice_.equationsHoldExactly());
  limited_ = isLimited(lattice_);
  StarStore store(lattice_);
  watch_.setStore(store);
  // The store has copied the problem as read, by which stars are judged.
  rowsContradict_ = !lattice_.tightenBounds();
  lattice_.tryStandardPrecision();
  lattice_.beginSearch(watch_, watch_.elapsed());
  const SearchEnd end = search();
  // Before the lattice is saved: a file that can't be written is fatal.
  store.save(lattice_);
  conclude(end);
  writeStatistics(end);
  const bool anyStars = store.report(report_);
  report_ << endLine();
  writeVerdict(anyStars);
  return end;
}

SearchEnd Seek::search() {
  try {
    watch_.look();
    lattice_.normalise(TargetRange::find, From::lifted);
    watch_.look();
    lattice_.prepareLattice();
    // The steps before have reports of their own if one row, or the equations alone, are a proof.
    if (rowsContradict_) fail("Unfulfillable rows detected --> NO SOLUTIONS!");
    while (!isOver()) {
      runPass();
      restartLattice();
    }
  } catch (const SearchEnded& ended) {
    return ended.reason();
  } catch (const PrecisionException& exception) {
    std::cerr << "\n*** " << exception.message() << endLine();
    stampOutputTime();
    return SearchEnd::overflow;
  }
  return SearchEnd::goal;
}

void Seek::runPass() {
  if (passLimit_ >= 0 && watch_.passes() >= passLimit_) throw SearchEnded(SearchEnd::passes);
  watch_.look();
  watch_.beginPass();
  watch_.endPass(searchPass(lattice_));
}

void Seek::restartLattice() {
  if (isOver()) return;
  if (lattice_.solutionCount() > solutionsBefore_) fruitless_ = 0;
  solutionsBefore_ = lattice_.solutionCount();
  if (!limited_ && fruitless_ == fruitlessRestarts) throw SearchEnded(SearchEnd::fruitless);
  ++fruitless_;
  // The next lattice is made from the problem, so the file of this one can be skipped.
  if (latticePace_.isDue(SavePace::Clock::now()) && !watch_.hasUnsaved()) saveLattice();
  try {
    lattice_.restartHandling(Outcome::unfinished);
  } catch (const RestartException&) {
    // There is a new lattice, which may be simpler than the one before.
    lattice_.tryStandardPrecision();
  }
}

void Seek::saveLattice() {
  const auto start = SavePace::Clock::now();
  lattice_.saveLattice();
  latticePace_.saved(start, SavePace::Clock::now());
}

/// Saves the lattice and reports the status unless the lattice has done so.
void Seek::conclude(SearchEnd end) {
  lattice_.endSearch();
  // A step that was interrupted has left its console blocks open.
  setConsoleDepth(0);
  try {
    lattice_.saveLattice();
    if (!lattice_.stopped()) lattice_.restartHandling(Outcome::finished);
  } catch (const PrecisionException&) {
    // The numbers that ended the search can also prevent saving its lattice.
    if (end != SearchEnd::overflow) throw;
  }
}

void Seek::writeStatistics(SearchEnd end) {
  if (lattice_.params().verb < 1) return;
  report_ << "Search ended: " << reasonText(end) << ". Passes = " << watch_.passes()
          << ", exchanges = " << watch_.exchanges() << ", restarts = " << lattice_.restarts()
          << ", seed = " << lattice_.seed() << endLine();
  stampOutputTime();
}

/// Reports what the result does not prove.
void Seek::writeVerdict(bool anyStars) {
  if (lattice_.solutionCount() == 0)
    report_ << "No " << (anyStars ? "further " : "")
            << "solution was found. This proves nothing: there may be one all the same."
            << endLine();
  else if (lattice_.hasTargets())
    report_ << "The first solution is the best one found, not proven to be the best there is."
            << endLine();
  stampOutputTime();
}

/// The lattice has ended the search, or its goal is met: while a lattice is being made it files
/// solutions, but doesn't end the search.
bool Seek::isOver() const {
  return lattice_.stopped() || lattice_.isSatisfied();
}

}  // namespace starsift

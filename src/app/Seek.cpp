#include "app/Seek.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

#include "app/ProfilePicture.h"
#include "app/ProofRemark.h"
#include "app/SearchGoal.h"
#include "app/SearchProfile.h"
#include "app/StarStore.h"
#include "search/SearchPass.h"
#include "system/Console.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Of the first walks beside the lattice, and of later ones at least.
constexpr std::chrono::duration<double> leastJumpTime{1};

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
    case SearchEnd::decided:
      return "decided";
  }
  return "";
}

}  // namespace

void applyArguments(YLattice<long double>& lattice, const SeekArguments& given) {
  lattice.useExtendedPrecision();
  lattice.readParams(given.parameters);
  if (given.seed) lattice.setSeed(*given.seed);
  if (!given.hasSol) lattice.seekBest();
}

Seek::Seek(YLattice<long double>& lattice, SearchWatch& watch, SeekOptions options,
           std::ostream& report)
    : lattice_(lattice), watch_(watch), options_(std::move(options)), report_(report) {
  const Params& params = lattice.params();
  passLimit_ = params.iters;
  watch.setTimeLimit(params.rtime.get());
  setExtendedOutput(params.verb == 2);
}

void Seek::readProblem() {
  lattice_.readOpt();
  if (options_.part) choosePart();
  const std::string path = lattice_.withLive([](const auto& live) { return live.file.path(); });
  treeFiles_.path = fileNames(path).stateFile;
}

void Seek::choosePart() {
  YSolutionFile known;
  lattice_.withLive([&known](const auto& live) { known.takeProblem(live.file); });
  known.mergeFile();
  if (lattice_.hasTargets()) treeFiles_.known = known.leastSearchedNorm();
  const auto& [part, parts] = *options_.part;
  lattice_.setFileNames(partFileNames(known.path(), part, parts).solFile);
}

void Seek::drawPicture() {
  const auto curves = searchProfile(lattice_, options_, [this] { return !watch_.endFound(); });
  if (curves)
    drawProfile(*curves, options_.profile);
  else
    remarkStream() << "*** No profile: the complete search has no lattice in a finite box"
                   << endLine();
}

SearchEnd Seek::run() {
  if (!options_.profile.empty()) requireGnuplot();
  readProblem();
  StarStore store(lattice_);
  treeFiles_.filed = store.starCount();
  store.tellIfReadOnly();
  if (const auto left = watch_.timeLeft()) store.setEnd(StarStore::Clock::now() + *left);
  const SearchEnd end = search(store);
  starsFiled_ = store.save(lattice_);
  if (starsFiled_) finishTree();
  conclude(end);
  writeStatistics(end);
  const bool anyStars = store.report(report_);
  report_ << endLine();
  const SearchResult ended = result(store, anyStars);
  writeVerdict(report_, ended);
  if (options_.json) report_ << jsonLine(ended) << endLine();
  stampOutputTime();
  if (!starsFiled_ && !part_) saveLastLattice(end);
  // A count that isn't complete has no other end.
  const bool isOver = end == SearchEnd::decided || (end == SearchEnd::goal && !options_.count);
  // What it proves has been told.
  if (starsFiled_ && isOver && !part_) {
    report_.flush();
    decide_->removeState();
  }
  return end;
}

void Seek::finishTree() {
  if (part_)
    part_->finish();
  else
    decide_->finish();
}

SearchEnd Seek::search(SolutionSink& sink) {
  sink_ = &sink;
  scope_ = proofScope(lattice_.problemAsRead());
  setProofScope(scope_);
  limited_ = isLimited(lattice_);
  watch_.setSink(sink);
  stars_.emplace(lattice_, sink);
  if (options_.part) {
    if (hasNormLimit(lattice_))
      fail(
          "A part of a search proves the optimum, or has solutions enough: not with tnorm or "
          "snorm");
    part_.emplace(lattice_.problemAsRead(), deciderSettings(lattice_, options_), watch_, *stars_,
                  options_, treeFiles_, readTreeState(treeFiles_.path, STARSIFT_VERSION),
                  TreeOwner::part);
  }
  const bool keepsTree = sink.keepsLattices() && !options_.part;
  decide_.emplace(lattice_, watch_, *stars_, options_,
                  keepsTree ? std::optional(treeFiles_) : std::nullopt);
  jump_.emplace(lattice_, decide_->problem(), watch_, *stars_, decide_->wantsBest(),
                decide_->threads());
  helpers_.emplace(lattice_, decide_->problem(), watch_, *stars_, decide_->wantsBest(),
                   decide_->threads());
  if (!options_.profile.empty()) drawPicture();
  lattice_.beginSearch(watch_, watch_.elapsed());
  const SearchEnd end = searchAll();
  helpers_->end();
  stars_->findRepeats();
  return end;
}

SearchEnd Seek::searchAll() {
  try {
    if (part_) return part_->run().value_or(SearchEnd::decided);
    makeNormalForm();
    if (options_.count)
      decide();
    else
      searchLattices();
  } catch (const SearchEnded& ended) {
    return ended.reason();
  } catch (const PrecisionException& exception) {
    remarkStream() << "\n*** " << exception.message() << endLine();
    stampOutputTime();
    return SearchEnd::overflow;
  }
  return SearchEnd::goal;
}

/// Each step takes a tenth of a second with some thousand variables.
void Seek::makeNormalForm() {
  watch_.look();
  // The store has copied the problem as read, by which stars are judged.
  rowsContradict_ = !lattice_.tightenBounds();
  watch_.look();
  lattice_.tryStandardPrecision();
  watch_.look();
}

void Seek::searchLattices() {
  // With a number of passes the result shouldn't depend on their time.
  if (passLimit_ < 0) watch_.setBeside([this] { lookBeside(); });
  if (passLimit_ < 0 && !isOver() && decide_->isWorthRelaxing() && decide_->relax())
    throw SearchEnded(SearchEnd::decided);
  lattice_.normalise(TargetRange::find, From::lifted);
  watch_.look();
  lattice_.prepareLattice();
  // The steps before have reports of their own if one row, or the equations alone, are a proof.
  if (rowsContradict_) fail("Unfulfillable rows detected --> NO SOLUTIONS!");
  while (!isOver()) {
    isLost_ = false;
    try {
      searchLattice();
    } catch (const PrecisionException&) {
      // The numbers of the problem aren't too large, as its first basis was reduced: a random
      // change of it was too wild.
      if (lattice_.restarts() == 0) throw;
      isLost_ = true;
      setConsoleDepth(0);
    }
    restartLattice();
  }
}

void Seek::searchLattice() {
  runPass();
  // A proof that was asked for comes first.
  const bool blocksFirst = isWorthBlocksFirst(lattice_) && !options_.prove.value_or(false);
  if (blocksFirst && !isOver()) searchBlocks(lattice_);
  if (!isOver()) decide();
  if (!isOver()) jump();
  if (!blocksFirst && !isOver()) searchBlocks(lattice_);
  if (!isOver()) searchTrimmed(lattice_);
}

/// Throws SearchEnded if the complete search has ended the whole one.
void Seek::decide() {
  if (!decide_->isDue()) return;
  const HelperLattices::Pause pause(*helpers_);
  const auto start = watch_.elapsed();
  if (decide_->run()) throw SearchEnded(SearchEnd::decided);
  decideTime_ += watch_.elapsed() - start;
}

/// Walks beside the lattice take as much time as the lattices do, up to the last pass. Throws
/// SearchEnded if they have reached the goal.
void Seek::jump() {
  if (hasMadeAllPasses()) return;
  const std::chrono::duration<double> left = jumpTimeLeft();
  if (left.count() <= 0) return;
  const HelperLattices::Pause pause(*helpers_);
  const auto start = watch_.elapsed();
  if (jump_->run(std::max(leastJumpTime, left))) throw SearchEnded(SearchEnd::goal);
  jumpTime_ += watch_.elapsed() - start;
}

/// Where a pass takes long its steps do the same; so does the decision after it, which a good
/// solution makes shorter.
void Seek::lookBeside() {
  if (helpers_->look()) throw SearchEnded(SearchEnd::goal);
  if (jumpTimeLeft() >= leastJumpTime && !isOver()) jump();
}

/// The time that lattices have had more than walks.
std::chrono::duration<double> Seek::jumpTimeLeft() const {
  return watch_.elapsed() - decideTime_ - 2 * jumpTime_;
}

bool Seek::hasMadeAllPasses() const {
  return passLimit_ >= 0 && watch_.passes() >= passLimit_;
}

/// Of the lattices and beside them, each once.
Index Seek::solutionCount() const {
  return lattice_.solutionCount() + (stars_ ? stars_->count() - stars_->repeatCount() : 0);
}

void Seek::runPass() {
  if (hasMadeAllPasses()) {
    if (options_.prove.value_or(false)) decide();
    throw SearchEnded(SearchEnd::passes);
  }
  watch_.look();
  watch_.beginPass();
  watch_.endPass(searchPass(lattice_));
}

void Seek::restartLattice() {
  if (isOver()) return;
  stars_->findRepeats();
  if (solutionCount() > solutionsBefore_) fruitless_ = 0;
  solutionsBefore_ = solutionCount();
  if (!limited_ && fruitless_ == fruitlessRestarts) throw SearchEnded(SearchEnd::fruitless);
  ++fruitless_;
  // The next lattice is made from the problem, so the file of this one can be skipped.
  if (!isLost_ && sink_->keepsLattices() && latticePace_.isDue(SavePace::Clock::now()) &&
      !watch_.hasUnsaved())
    saveLattice();
  makeNextLattice(lattice_);
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
  // A lattice that can't be written is fatal, and the stars may be in the report only.
  if (starsFiled_ && !part_) saveLastLattice(end);
  if (!lattice_.stopped()) writeStatus();
}

void Seek::saveLastLattice(SearchEnd end) {
  try {
    lattice_.saveLattice();
  } catch (const PrecisionException&) {
    // The numbers that ended the search can also prevent saving its lattice.
    if (end != SearchEnd::overflow && !isLost_) throw;
  }
}

/// The lattice writes the status when it ends a search. It doesn't know the solutions that
/// were found without it.
void Seek::writeStatus() {
  if (stars_->count() == 0) return lattice_.restartHandling(Outcome::finished);
  const Index shown = lattice_.solutionCount() + stars_->first().dimension();
  reportStream() << lattice_.statusText(stars_->first(), solutionCount() - shown) << endLine();
  stampOutputTime();
}

void Seek::writeStatistics(SearchEnd end) {
  if (lattice_.params().verb < 1) return;
  report_ << "Search ended: " << reasonText(end) << ". Passes = " << watch_.passes()
          << ", exchanges = " << watch_.exchanges() << ", restarts = " << lattice_.restarts()
          << ", seed = " << lattice_.seed() << endLine();
  stampOutputTime();
}

SearchResult Seek::result(const SolutionSink& sink, bool anyStars) const {
  SearchResult result;
  if (part_)
    result.decided = part_->result();
  else if (decide_)
    result.decided = decide_->result();
  if (part_ && part_->hasTree()) result.part = part_->partResult();
  result.scope = scope_;
  result.hasTargets = lattice_.hasTargets();
  result.isCount = options_.count;
  result.hasStars = anyStars;
  result.solutions = solutionCount();
  takeStars(sink, result);
  result.passes = watch_.passes();
  result.seed = lattice_.seed();
  result.seconds = std::chrono::duration<double>(watch_.elapsed()).count();
  return result;
}

/// The lattice has ended the search, or its goal is met: while a lattice is being made it files
/// solutions, but doesn't end the search.
bool Seek::isOver() const {
  return lattice_.stopped() || lattice_.isSatisfied();
}

}  // namespace starsift

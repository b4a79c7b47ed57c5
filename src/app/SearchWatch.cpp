#include "app/SearchWatch.h"

#include <algorithm>
#include <cmath>

#include "app/Interrupt.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

/// Steps of the standard lattice, microseconds each, between two readings of the clock, which
/// are system calls on some machines. With long numbers a step takes milliseconds.
constexpr Index stepsPerLook = 16;

/// Writes the target norm of the best solution or, while there is none, the length of the best
/// vector.
template <class T, class R>
void writeBest(std::ostream& stream, const Lattice<T, R>& lattice) {
  if (lattice.found.bestTarget.isSet())
    stream << ", best target norm " << lattice.found.bestTarget.targetNorm;
  else if (lattice.found.bestVector.isSet())
    stream << ", best norm " << std::sqrt(lattice.found.bestRecord.squaredNorm);
}

}  // namespace

void SearchWatch::count(const PassCounts& counts) {
  // In a new pass the counts start again from 0.
  if (counts.swaps < counted_) counted_ = 0;
  exchanges_ += counts.swaps - counted_;
  counted_ = counts.swaps;
}

void SearchWatch::endPass(const PassCounts& counts) {
  count(counts);
  counted_ = 0;
}

void SearchWatch::onStep(const PassCounts& counts) {
  count(counts);
  if (interrupted() != 0 || lattice_.usesExact() || ++steps_ % stepsPerLook == 0) lookFromLattice();
}

void SearchWatch::lookFromLattice() {
  look();
  if (beside_) beside_();
}

void SearchWatch::look() {
  if (sink_ != nullptr && sink_->isDue(lattice_)) sink_->trySave(lattice_);
  if (interrupted() != 0) throw SearchEnded(SearchEnd::interrupt);
  if (listener_ != nullptr && listener_->looked(*this) == Step::stop)
    throw SearchEnded(SearchEnd::interrupt);
  const auto now = StatusLine::Clock::now();
  if (timeLimit_ > 0 && now - start_ >= std::chrono::duration<long double>(timeLimit_))
    throw SearchEnded(SearchEnd::time);
  if (line_.isDue(now)) line_.draw(status(now), now);
}

std::optional<SearchEnd> SearchWatch::endFound() {
  try {
    look();
    return std::nullopt;
  } catch (const SearchEnded& ended) {
    return ended.reason();
  }
}

std::optional<std::chrono::duration<double>> SearchWatch::timeLeft() const {
  if (timeLimit_ <= 0) return std::nullopt;
  const std::chrono::duration<double> left = std::chrono::duration<double>(timeLimit_) - elapsed();
  return std::max(left, std::chrono::duration<double>::zero());
}

void SearchWatch::showTree(double share, std::uint64_t nodes, Index solutions) {
  if (!tree_) tree_ = ShownTree{{}, 0, StatusLine::Clock::now()};
  tree_->progress.share = share;
  tree_->progress.nodes = nodes;
  tree_->solutions = solutions;
}

std::optional<TreeProgress> SearchWatch::tree() const {
  if (!tree_) return std::nullopt;
  TreeProgress progress = tree_->progress;
  progress.seconds = std::chrono::duration<double>(StatusLine::Clock::now() - tree_->start).count();
  return progress;
}

std::string SearchWatch::status(StatusLine::Clock::time_point now) const {
  TextWriter text;
  if (tree_) {
    text << treeStatus(*tree()) << ", " << lattice_.solutionCount() + tree_->solutions
         << " solutions, " << std::chrono::duration_cast<std::chrono::seconds>(now - start_).count()
         << " s";
    return text.str();
  }
  text << "pass " << passes_ << ", " << exchanges_ << " exchanges";
  lattice_.withLive([&text](const auto& lattice) { writeBest(text, lattice); });
  text << ", " << lattice_.solutionCount() << " solutions, "
       << std::chrono::duration_cast<std::chrono::seconds>(now - start_).count() << " s";
  return text.str();
}

}  // namespace starsift

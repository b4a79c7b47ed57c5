#include "library/MemorySink.h"

#include <cxxabi.h>

#include <utility>

#include "library/Inside.h"
#include "problem/SearchedPoints.h"
#include "stars/StarNorms.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

constexpr std::chrono::milliseconds progressInterval{10};

std::string pointText(const Star<QQ>& star) {
  TextWriter text;
  text << star.x();
  return std::move(text).str();
}

}  // namespace

bool MemorySink::hasNews(const YLattice<long double>& search) const {
  return search.lastFiled() > taken_;
}

void MemorySink::trySave(const YLattice<long double>& search) {
  for (const Star<QQ>& star : search.starsFiledAfter(taken_)) add(star);
  taken_ = search.lastFiled();
}

void MemorySink::know(const Array<Star<QQ>>& stars, const Vanu<QQ>& problem) {
  const SearchedPoints searched(problem);
  for (const Star<QQ>& star : stars) keep(star, searched.contain(star.x()));
}

bool MemorySink::keep(const Star<QQ>& star, bool isSearched) {
  if (!known_.insert(pointText(star)).second) return false;
  append(stars_, star);
  lowerTo(leastNorm_, star.targetNorm);
  if (isSearched)
    lowerTo(leastSearchedNorm_, star.targetNorm);
  else
    hasOtherStars_ = true;
  return true;
}

void MemorySink::add(const Star<QQ>& star) {
  if (!keep(star, true)) return;
  if (calls_.onSolution) tell(calls_.onSolution, Inside::solution(star));
}

Step MemorySink::looked(const SearchWatch& watch) {
  const auto now = std::chrono::steady_clock::now();
  if (calls_.onProgress && now >= nextProgress_) {
    nextProgress_ = now + progressInterval;
    Search::Progress progress;
    progress.seconds = std::chrono::duration<double>(watch.elapsed()).count();
    progress.passes = static_cast<std::uint64_t>(watch.passes());
    progress.solutions = known_.size();
    if (const std::optional<TreeProgress> tree = watch.tree()) {
      progress.treeShare = tree->share;
      progress.nodes = tree->nodes;
    }
    tell(calls_.onProgress, progress);
  }
  return error_ || stop_.stop_requested() ? Step::stop : Step::goOn;
}

void MemorySink::rethrow() const {
  if (error_) std::rethrow_exception(error_);
}

template <class Call, class Argument>
void MemorySink::tell(const Call& call, const Argument& argument) {
  if (error_) return;
  const ThreadLocale host(hostLocale_);
  try {
    call(argument);
  } catch (const abi::__forced_unwind&) {
    // The host has ended the thread in the middle of the call.
    throw;
  } catch (...) {
    error_ = std::current_exception();
  }
}

}  // namespace starsift

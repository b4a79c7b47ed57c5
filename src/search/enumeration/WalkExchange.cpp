#include "search/enumeration/WalkExchange.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace starsift {

namespace {

/// Points that may wait for the visitor before the threads that find them wait too.
constexpr std::size_t mostPoints = 1024;

/// The caller looks at the clock and at signals as often while it has nothing to walk.
constexpr std::chrono::milliseconds longestWait{20};

using Lock = std::unique_lock<std::mutex>;

}  // namespace

WalkExchange::WalkExchange(std::size_t walkers, const std::optional<std::uint64_t>& nodeLimit,
                           std::vector<Subtree> subtrees)
    : subtrees_(std::move(subtrees)), walkers_(walkers), nodeLimit_(nodeLimit) {
  for (const Subtree& subtree : subtrees_) {
    Piece& piece = pieces_[subtree.piece];
    ++piece.parts;
    piece.total.piece = subtree.piece;
  }
  // Of equal ones the last is taken, which is removed fastest.
  std::reverse(subtrees_.begin(), subtrees_.end());
  update();
}

void WalkExchange::update() {
  wantsSubtrees_.store(walkers_.size() > 1 && subtrees_.size() < walkers_.size(),
                       std::memory_order_relaxed);
}

void WalkExchange::give(std::size_t walker, std::optional<Subtree> part) {
  if (!part) return;
  const Lock lock(mutex_);
  part->share *= walkers_[walker].weight;
  walkers_[walker].weight -= part->share;
  part->piece = walkers_[walker].piece;
  ++pieces_[part->piece].parts;
  subtrees_.push_back(*std::move(part));
  update();
  changed_.notify_all();
}

Subtree WalkExchange::popLargest(std::size_t walker) {
  const auto largest =
      std::max_element(subtrees_.rbegin(), subtrees_.rend(),
                       [](const Subtree& a, const Subtree& b) { return a.share < b.share; });
  Subtree result = std::move(*largest);
  subtrees_.erase(std::prev(largest.base()));
  ++busy_;
  walkers_[walker].weight = result.share;
  walkers_[walker].piece = result.piece;
  update();
  return result;
}

std::optional<Subtree> WalkExchange::take(std::size_t walker) {
  Lock lock(mutex_);
  changed_.wait(lock, [this] { return isEnded() || !subtrees_.empty() || isDone(); });
  if (isEnded() || subtrees_.empty()) return std::nullopt;
  return popLargest(walker);
}

WalkExchange::News WalkExchange::waitForNews() {
  Lock lock(mutex_);
  changed_.wait_for(lock, longestWait, [this] {
    return isEnded() || !results_.points.empty() || !subtrees_.empty() || isDone();
  });
  News news;
  if (!isEnded() && !results_.points.empty()) {
    news.results = std::exchange(results_, {});
    changed_.notify_all();
  } else if (isEnded() || isDone()) {
    news.isOver = true;
  } else if (!subtrees_.empty()) {
    news.subtree = popLargest(0);
  }
  return news;
}

void WalkExchange::finish(std::size_t walker, std::uint64_t nodes, std::uint64_t points,
                          EnumerationEnd end) {
  const Lock lock(mutex_);
  Walker& mine = walkers_[walker];
  finished_ += mine.weight;
  Piece& piece = pieces_[mine.piece];
  piece.total.nodes += nodes;
  piece.total.points += points;
  // What was left before its end keeps its piece from being finished.
  if (end == EnumerationEnd::complete && --piece.parts == 0)
    results_.finished.push_back(piece.total);
  mine = {0, 0, 0, 0, mine.nodesBefore + nodes};
  isPruned_ = isPruned_ || end == EnumerationEnd::pruned;
  --busy_;
  changed_.notify_all();
}

void WalkExchange::end(EnumerationEnd reason) {
  const Lock lock(mutex_);
  if (!isEnded_.exchange(true)) end_ = reason;
  changed_.notify_all();
}

void WalkExchange::fail(std::exception_ptr exception) {
  const Lock lock(mutex_);
  if (!exception_) exception_ = std::move(exception);
  isEnded_ = true;
  changed_.notify_all();
}

EnumerationEnd WalkExchange::outcome() const {
  const Lock lock(mutex_);
  if (exception_) std::rethrow_exception(exception_);
  if (isEnded()) return end_;
  return isPruned_ ? EnumerationEnd::pruned : EnumerationEnd::complete;
}

std::uint64_t WalkExchange::allNodes() const {
  std::uint64_t nodes = 0;
  for (const Walker& walker : walkers_) nodes += walker.nodes + walker.nodesBefore;
  return nodes;
}

void WalkExchange::report(std::size_t walker, double share, std::uint64_t nodes) {
  const Lock lock(mutex_);
  walkers_[walker].done = share;
  walkers_[walker].nodes = nodes;
  if (!nodeLimit_ || allNodes() < *nodeLimit_) return;
  if (!isEnded_.exchange(true)) end_ = EnumerationEnd::limit;
  changed_.notify_all();
}

WalkExchange::Progress WalkExchange::progress() {
  const Lock lock(mutex_);
  double share = finished_;
  for (const Walker& walker : walkers_) share += walker.weight * walker.done;
  told_ = std::max(told_, std::min(share, 1.0));
  return {told_, allNodes()};
}

std::optional<std::uint64_t> WalkExchange::nodesLeft() const {
  if (!nodeLimit_) return std::nullopt;
  const Lock lock(mutex_);
  return *nodeLimit_ - std::min(*nodeLimit_, allNodes());
}

std::uint64_t WalkExchange::otherNodes() const {
  const Lock lock(mutex_);
  std::uint64_t nodes = 0;
  for (std::size_t i = 1; i < walkers_.size(); ++i) nodes += walkers_[i].nodesBefore;
  return nodes;
}

void WalkExchange::post(const Point& point) {
  Lock lock(mutex_);
  changed_.wait(lock, [this] { return isEnded() || results_.points.size() < mostPoints; });
  results_.points.push_back(point);
  changed_.notify_all();
}

WalkExchange::Results WalkExchange::takeResults() {
  const Lock lock(mutex_);
  if (!results_.points.empty()) changed_.notify_all();
  return std::exchange(results_, {});
}

void WalkExchange::publishBox(const BoxCoset& coset) {
  const Lock lock(mutex_);
  box_.lower = coset.lower;
  box_.upper = coset.upper;
  ++boxVersion_;
}

void WalkExchange::narrow(EnumerationWalk& walk, std::uint64_t& version) const {
  if (boxVersion_.load(std::memory_order_relaxed) == version) return;
  const Lock lock(mutex_);
  version = boxVersion_;
  for (std::size_t j = 0; j < box_.lower.size(); ++j) walk.narrow(j, box_.lower[j], box_.upper[j]);
}

}  // namespace starsift

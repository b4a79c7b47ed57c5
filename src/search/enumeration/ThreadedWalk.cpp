#include "search/enumeration/ThreadedWalk.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "system/HelperThreads.h"

namespace starsift {

namespace {

/// Walks a subtree that `walker` has taken; `points` counts those that its visitor is told of.
void walkSubtree(WalkExchange& exchange, std::size_t walker, EnumerationWalk& walk,
                 EnumerationVisitor& visitor, EnumerationSettings settings, const Subtree& subtree,
                 const std::uint64_t& points) {
  settings.nodeLimit = exchange.nodesLeft();
  const std::uint64_t nodesBefore = walk.ownNodes();
  const std::uint64_t pointsBefore = points;
  const EnumerationEnd end = walk.runSubtree(visitor, settings, subtree);
  if (end == EnumerationEnd::limit) exchange.end(end);
  exchange.finish(walker, walk.ownNodes() - nodesBefore, points - pointsBefore, end);
}

Step nextStep(const WalkExchange& exchange) {
  return exchange.isEnded() ? Step::stop : Step::goOn;
}

}  // namespace

/// The visitor of a helper's walk, and its thread.
class ThreadedWalk::Helper : public EnumerationVisitor {
 public:
  Helper(WalkExchange& exchange, std::size_t walker, std::unique_ptr<EnumerationWalk> walk)
      : exchange_(exchange), walker_(walker), walk_(std::move(walk)) {}

  void work(const EnumerationSettings& settings) {
    try {
      // In memory of this thread: next to that of another walk each write would slow down both.
      walk_ = walk_->twin();
      while (const std::optional<Subtree> subtree = exchange_.take(walker_)) {
        exchange_.narrow(*walk_, boxVersion_);
        walkSubtree(exchange_, walker_, *walk_, *this, settings, *subtree, points_);
      }
    } catch (...) {
      exchange_.fail(std::current_exception());
    }
  }

  Step found(const std::vector<ZZ>& point) override {
    ++points_;
    exchange_.post(point);
    return nextStep(exchange_);
  }

  Step progress(double share, std::uint64_t nodes) override {
    exchange_.report(walker_, share, nodes);
    exchange_.narrow(*walk_, boxVersion_);
    if (exchange_.wantsSubtrees()) exchange_.give(walker_, walk_->splitOff());
    return nextStep(exchange_);
  }

 private:
  WalkExchange& exchange_;
  std::size_t walker_;
  std::unique_ptr<EnumerationWalk> walk_;
  std::uint64_t boxVersion_ = 0;
  std::uint64_t points_ = 0;
};

/// The threads beside the calling one.
class ThreadedWalk::Helpers {
 public:
  explicit Helpers(ThreadedWalk& walk) : walk_(walk) {}
  Helpers(const Helpers&) = delete;
  Helpers& operator=(const Helpers&) = delete;
  /// After an exception of the caller the others are still at work.
  ~Helpers() {
    walk_.exchange_.end(EnumerationEnd::stopped);
    join();
  }

  /// The first call starts them.
  void start() {
    if (std::exchange(areStarted_, true)) return;
    for (std::size_t i = 1; i < walk_.settings_.threads; ++i)
      helpers_.push_back(std::make_unique<Helper>(walk_.exchange_, i, walk_.walk_.twin()));
    threads_.start(static_cast<unsigned>(helpers_.size()),
                   [this](unsigned i) { helpers_[i - 1]->work(walk_.settings_); });
  }

  void join() { threads_.join(); }

 private:
  ThreadedWalk& walk_;
  bool areStarted_ = false;
  std::vector<std::unique_ptr<Helper>> helpers_;
  HelperThreads threads_;
};

/// The visitor of the caller's walk: passes on what all walks report.
class ThreadedWalk::Caller : public EnumerationVisitor {
 public:
  Caller(ThreadedWalk& walk, Helpers& helpers)
      : walk_(walk), helpers_(helpers), narrowings_(walk.walk_.narrowings()) {}

  Step found(const std::vector<ZZ>& point) override {
    ++points_;
    pass(point);
    return nextStep(walk_.exchange_);
  }

  Step progress(double share, std::uint64_t nodes) override {
    WalkExchange& exchange = walk_.exchange_;
    helpers_.start();
    exchange.report(0, share, nodes);
    deliver(exchange.takeResults());
    tell();
    if (exchange.wantsSubtrees()) exchange.give(0, walk_.walk_.splitOff());
    return nextStep(exchange);
  }

  /// Between two subtrees, which may be too small for a report of their own.
  void pause() {
    helpers_.start();
    deliver(walk_.exchange_.takeResults());
    tell();
  }

  /// Passes on what all walks have found and finished.
  void deliver(const WalkExchange::Results& results) {
    for (const WalkExchange::Point& point : results.points) pass(point);
    for (const FinishedPiece& piece : results.finished)
      if (!hasStopped_) walk_.visitor_.finished(piece);
  }

  /// Points that the caller's own walk has found.
  const std::uint64_t& points() const { return points_; }

  /// Tells the visitor of the progress of all walks.
  void tell() {
    const WalkExchange::Progress progress = walk_.exchange_.progress();
    if (!hasStopped_) obey(walk_.visitor_.progress(progress.share, progress.nodes));
  }

 private:
  void pass(const WalkExchange::Point& point) {
    // The box may have become smaller since another thread has found the point.
    if (!hasStopped_ && isInBox(walk_.walk_.coset(), point)) obey(walk_.visitor_.found(point));
  }

  /// After a call of the visitor, which may have narrowed the box.
  void obey(Step step) {
    if (step == Step::stop) {
      hasStopped_ = true;
      walk_.exchange_.end(EnumerationEnd::stopped);
    }
    const std::uint64_t present = walk_.walk_.narrowings();
    if (std::exchange(narrowings_, present) != present)
      walk_.exchange_.publishBox(walk_.walk_.coset());
  }

  ThreadedWalk& walk_;
  Helpers& helpers_;
  /// Of the walk when the box was published.
  std::uint64_t narrowings_;
  std::uint64_t points_ = 0;
  /// The visitor isn't called any more.
  bool hasStopped_ = false;
};

ThreadedWalk::ThreadedWalk(EnumerationWalk& walk, EnumerationVisitor& visitor,
                           const EnumerationSettings& settings, std::vector<Subtree> subtrees)
    : walk_(walk),
      visitor_(visitor),
      settings_(settings),
      hasSeveral_(subtrees.size() > 1),
      exchange_(settings.threads, settings.nodeLimit, std::move(subtrees)) {}

EnumerationEnd ThreadedWalk::run() {
  Helpers helpers(*this);
  Caller caller(*this, helpers);
  while (true) {
    const WalkExchange::News news = exchange_.waitForNews();
    if (news.isOver) break;
    caller.deliver(news.results);
    if (news.subtree)
      walkSubtree(exchange_, 0, walk_, caller, settings_, *news.subtree, caller.points());
    else
      caller.tell();
    if (news.subtree && hasSeveral_) caller.pause();
  }
  helpers.join();
  // Before the node limit.
  caller.deliver(exchange_.takeResults());
  return exchange_.outcome();
}

}  // namespace starsift

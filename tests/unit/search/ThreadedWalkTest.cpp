#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>

#include "search/enumeration/CosetReduction.h"
#include "search/enumeration/TreeCut.h"
#include "support/fixtures/CollectingVisitor.h"
#include "support/fixtures/EquationCoset.h"

namespace starsift {
namespace {

using test::CollectingVisitor;
using Point = std::vector<ZZ>;
using Points = std::set<Point>;

/// Variables from 0 to 3 in one equation: hundreds of solutions for 8.
BoxCoset crowd(std::size_t count) {
  Point row;
  ZZ sum;
  for (std::size_t j = 0; j < count; ++j) sum += row.emplace_back(static_cast<long>(j) + 3);
  const ZZ half(3 * std::stol(sum.toString()) / 2);
  std::optional<BoxCoset> coset =
      test::cosetOfEquations({row}, {half}, Point(count), Point(count, ZZ(3)));
  EXPECT_TRUE(coset && reduceCoset(*coset, [] { return true; }));
  return *std::move(coset);
}

struct DoubleWalk {
  static std::unique_ptr<EnumerationWalk> make(const BoxCoset& coset) {
    return test::floatingWalk<double>(coset);
  }
};

struct LongDoubleWalk {
  static std::unique_ptr<EnumerationWalk> make(const BoxCoset& coset) {
    return test::floatingWalk<long double>(coset);
  }
};

struct RationalWalk {
  static std::unique_ptr<EnumerationWalk> make(const BoxCoset& coset) {
    return std::make_unique<ExactWalk>(coset);
  }
};

EnumerationSettings inThreads(unsigned threads, std::uint64_t nodesPerReport = 8) {
  EnumerationSettings settings;
  settings.threads = threads;
  settings.nodesPerReport = nodesPerReport;
  return settings;
}

template <class Walk>
class ThreadedWalkOver : public testing::Test {
 protected:
  static const BoxCoset& coset() {
    static const BoxCoset coset = crowd(8);
    return coset;
  }
  std::unique_ptr<EnumerationWalk> walk_ = Walk::make(coset());
  const Points expected_ = test::pointsOf(*Walk::make(coset()));

  void expectAllPoints(unsigned threads) {
    CollectingVisitor visitor;
    EXPECT_EQ(walk_->run(visitor, inThreads(threads)), EnumerationEnd::complete);
    EXPECT_FALSE(visitor.isDouble);
    EXPECT_EQ(visitor.points, expected_);
  }
};

using Walks = testing::Types<DoubleWalk, LongDoubleWalk, RationalWalk>;
TYPED_TEST_SUITE(ThreadedWalkOver, Walks);

TYPED_TEST(ThreadedWalkOver, FindsAllPointsInOneThread) {
  this->expectAllPoints(1);
}

TYPED_TEST(ThreadedWalkOver, FindsAllPointsInTwoThreads) {
  this->expectAllPoints(2);
}

TYPED_TEST(ThreadedWalkOver, FindsAllPointsInThreeThreads) {
  this->expectAllPoints(3);
}

TYPED_TEST(ThreadedWalkOver, FindsAllPointsInEightThreads) {
  this->expectAllPoints(8);
}

TYPED_TEST(ThreadedWalkOver, ReportsSharesThatNeverDecrease) {
  CollectingVisitor visitor;
  EXPECT_EQ(this->walk_->run(visitor, inThreads(3)), EnumerationEnd::complete);
  EXPECT_TRUE(std::is_sorted(visitor.shares.begin(), visitor.shares.end()));
  EXPECT_LE(visitor.shares.back(), 1);
}

TYPED_TEST(ThreadedWalkOver, EndsWhenTheVisitorStops) {
  CollectingVisitor visitor;
  visitor.enough = 20;
  EXPECT_EQ(this->walk_->run(visitor, inThreads(3)), EnumerationEnd::stopped);
  EXPECT_EQ(visitor.points.size(), 20U);
}

TYPED_TEST(ThreadedWalkOver, EndsAtTheNodeLimit) {
  CollectingVisitor visitor;
  EnumerationSettings settings = inThreads(3, 64);
  settings.nodeLimit = 300;
  EXPECT_EQ(this->walk_->run(visitor, settings), EnumerationEnd::limit);
  EXPECT_GE(this->walk_->nodes(), 300U);
  EXPECT_LE(this->walk_->nodes(), 300U + 3 * 64);
  // Another run begins anew.
  this->expectAllPoints(2);
}

TYPED_TEST(ThreadedWalkOver, KeepsThePointsOfANarrowedBox) {
  Points few;
  for (const Point& point : this->expected_)
    if (point[0] >= ZZ(1) && point[0] <= ZZ(2)) few.insert(point);
  this->walk_->narrow(0, ZZ(1), ZZ(2));
  CollectingVisitor visitor;
  EXPECT_EQ(this->walk_->run(visitor, inThreads(3)), EnumerationEnd::complete);
  EXPECT_EQ(visitor.points, few);
}

TYPED_TEST(ThreadedWalkOver, SaysThatItHasPruned) {
  CollectingVisitor visitor;
  EnumerationSettings settings = inThreads(3);
  settings.pruning = 0.05;
  EXPECT_EQ(this->walk_->run(visitor, settings), EnumerationEnd::pruned);
}

/// Splits off what it can at each report.
class Splitter : public CollectingVisitor {
 public:
  explicit Splitter(EnumerationWalk& walk) : walk_(walk) {}
  Step progress(double, std::uint64_t) override {
    if (std::optional<Subtree> part = walk_.splitOff()) parts.push_back(*std::move(part));
    return Step::goOn;
  }

  std::vector<Subtree> parts;

 private:
  EnumerationWalk& walk_;
};

TYPED_TEST(ThreadedWalkOver, HandsOverEachSubtreeOnce) {
  const EnumerationSettings settings = inThreads(1, 1);
  const auto other = this->walk_->twin();
  Splitter mine(*this->walk_);
  Splitter theirs(*other);
  EXPECT_EQ(this->walk_->runSubtree(mine, settings, {}), EnumerationEnd::complete);
  EXPECT_FALSE(mine.parts.empty());
  std::size_t walked = 0;
  theirs.parts = mine.parts;
  while (walked < theirs.parts.size()) {
    const Subtree part = theirs.parts[walked++];
    EXPECT_EQ(other->runSubtree(theirs, settings, part), EnumerationEnd::complete);
  }
  EXPECT_GT(walked, mine.parts.size());
  EXPECT_FALSE(mine.isDouble || theirs.isDouble);
  EXPECT_EQ(mine.points.size() + theirs.points.size(), this->expected_.size());
  mine.points.merge(theirs.points);
  EXPECT_EQ(mine.points, this->expected_);
}

/// Keeps what it is told of subtrees too.
class PieceVisitor : public CollectingVisitor {
 public:
  void finished(const FinishedPiece& piece) override {
    EXPECT_TRUE(pieces.insert(piece.piece).second);
    counted += piece.points;
    EXPECT_LE(counted, points.size());
  }

  std::set<std::size_t> pieces;
  /// Points of all finished subtrees.
  std::uint64_t counted = 0;
};

template <class Walk>
class TreeCutOver : public ThreadedWalkOver<Walk> {
 protected:
  std::vector<Subtree> cut(std::size_t wanted) const {
    return *cutTree(*this->walk_->twin(), wanted, [] { return true; });
  }
};
TYPED_TEST_SUITE(TreeCutOver, Walks);

TYPED_TEST(TreeCutOver, FindsEachPointBelowOneSubtree) {
  for (const std::size_t wanted : {1, 2, 5, 30, 1000}) {
    const std::vector<Subtree> pieces = this->cut(wanted);
    EXPECT_GE(pieces.size(), std::min<std::size_t>(wanted, 30));
    for (const unsigned threads : {1, 3}) {
      PieceVisitor visitor;
      EXPECT_EQ(this->walk_->run(visitor, inThreads(threads), pieces), EnumerationEnd::complete);
      EXPECT_FALSE(visitor.isDouble);
      EXPECT_EQ(visitor.points, this->expected_);
      EXPECT_EQ(visitor.pieces.size(), pieces.size());
      EXPECT_EQ(visitor.counted, this->expected_.size());
    }
  }
}

TYPED_TEST(TreeCutOver, IsTheSameAfterAWalk) {
  const auto paths = [this] {
    std::vector<std::vector<QQ>> result;
    for (const Subtree& piece : this->cut(30)) result.push_back(piece.path);
    return result;
  };
  const auto before = paths();
  CollectingVisitor visitor;
  this->walk_->run(visitor, inThreads(1));
  EXPECT_EQ(paths(), before);
}

TYPED_TEST(TreeCutOver, EndsWhenItIsToldTo) {
  int steps = 0;
  EXPECT_FALSE(cutTree(*this->walk_->twin(), 30, [&steps] { return ++steps < 3; }));
  EXPECT_EQ(steps, 3);
}

TYPED_TEST(TreeCutOver, FinishesNoSubtreeWhosePointsWereLeft) {
  const std::vector<Subtree> pieces = this->cut(30);
  for (const unsigned threads : {1, 3}) {
    PieceVisitor first;
    first.enough = this->expected_.size() / 2;
    EXPECT_EQ(this->walk_->run(first, inThreads(threads), pieces), EnumerationEnd::stopped);
    EXPECT_LT(first.pieces.size(), pieces.size());
    std::vector<Subtree> rest;
    for (const Subtree& piece : pieces)
      if (!first.pieces.contains(piece.piece)) rest.push_back(piece);
    PieceVisitor second;
    EXPECT_EQ(this->walk_->run(second, inThreads(threads), rest), EnumerationEnd::complete);
    EXPECT_EQ(first.counted + second.counted, this->expected_.size());
    second.points.merge(first.points);
    EXPECT_EQ(second.points, this->expected_);
  }
}

// In floating point, each thread has its own count of linear programs that small trees may solve.
TEST(ThreadedWalk, CountsTheNodesOfAllThreads) {
  ExactWalk alone(crowd(8));
  ExactWalk together(crowd(8));
  const Points points = test::pointsOf(alone);
  CollectingVisitor visitor;
  EXPECT_EQ(together.run(visitor, inThreads(3)), EnumerationEnd::complete);
  EXPECT_EQ(together.nodes(), alone.nodes());
  EXPECT_EQ(visitor.points, points);
}

/// The walk of the caller splits off subtrees and waits for its end; each twin finds one point,
/// and throws if it is told to.
class FakeWalk : public EnumerationWalk {
 public:
  FakeWalk(bool isCaller, bool throws)
      : EnumerationWalk({{}, Point(1), Point(1), Point(1)}), isCaller_(isCaller), throws_(throws) {}

  std::unique_ptr<EnumerationWalk> twin() const override {
    return std::make_unique<FakeWalk>(false, throws_);
  }
  EnumerationEnd runSubtree(EnumerationVisitor& visitor, const EnumerationSettings&,
                            const Subtree&) override {
    if (!isCaller_) {
      if (throws_) throw std::runtime_error("of a helper");
      return visitor.found(Point(1)) == Step::stop ? EnumerationEnd::stopped
                                                   : EnumerationEnd::complete;
    }
    while (visitor.progress(0, 0) == Step::goOn) std::this_thread::yield();
    return EnumerationEnd::stopped;
  }
  std::optional<Subtree> splitOff() override { return Subtree{}; }
  std::vector<QQ> choicesBelow(const std::vector<QQ>&, std::size_t) override { return {}; }
  std::uint64_t ownNodes() const override { return 0; }
  TreeEstimate probe(const ProbeSettings&) const override { return {}; }

 private:
  void onNarrowed(std::size_t) override {}

  bool isCaller_;
  bool throws_;
};

TEST(ThreadedWalk, ThrowsTheExceptionOfAnotherThread) {
  FakeWalk walk(true, true);
  CollectingVisitor visitor;
  EXPECT_THROW(walk.run(visitor, inThreads(3)), std::runtime_error);
}

/// Accepts points in its own thread.
class Resident : public EnumerationVisitor {
 public:
  Step found(const Point&) override {
    EXPECT_EQ(std::this_thread::get_id(), home_);
    return ++count_ == 5 ? Step::stop : Step::goOn;
  }
  Step progress(double, std::uint64_t) override {
    EXPECT_EQ(std::this_thread::get_id(), home_);
    return Step::goOn;
  }
  int count() const { return count_; }

 private:
  std::thread::id home_ = std::this_thread::get_id();
  int count_ = 0;
};

TEST(ThreadedWalk, CallsTheVisitorInTheThreadOfTheCaller) {
  FakeWalk walk(true, false);
  Resident visitor;
  EXPECT_EQ(walk.run(visitor, inThreads(3)), EnumerationEnd::stopped);
  EXPECT_EQ(visitor.count(), 5);
}

/// The walk of the caller has one subtree to leave, and is done as soon as somebody walks it.
class ShortWalk : public EnumerationWalk {
 public:
  static constexpr int pointsBelow = 5000;

  explicit ShortWalk(std::shared_ptr<std::atomic<bool>> isTaken, bool isCaller)
      : EnumerationWalk({{}, Point(1), Point(1), Point(1)}),
        isTaken_(std::move(isTaken)),
        isCaller_(isCaller) {}

  std::unique_ptr<EnumerationWalk> twin() const override {
    return std::make_unique<ShortWalk>(isTaken_, false);
  }
  EnumerationEnd runSubtree(EnumerationVisitor& visitor, const EnumerationSettings&,
                            const Subtree&) override {
    if (isCaller_) {
      visitor.progress(0, 0);
      while (!*isTaken_) std::this_thread::yield();
    } else {
      *isTaken_ = true;
      for (int i = 0; i < pointsBelow; ++i) visitor.found(Point(1));
    }
    return EnumerationEnd::complete;
  }
  std::optional<Subtree> splitOff() override { return Subtree{}; }
  std::vector<QQ> choicesBelow(const std::vector<QQ>&, std::size_t) override { return {}; }
  std::uint64_t ownNodes() const override { return 0; }
  TreeEstimate probe(const ProbeSettings&) const override { return {}; }

 private:
  void onNarrowed(std::size_t) override {}

  std::shared_ptr<std::atomic<bool>> isTaken_;
  bool isCaller_;
};

/// Counts points.
class Counter : public EnumerationVisitor {
 public:
  Step found(const Point&) override {
    ++count;
    return Step::goOn;
  }
  Step progress(double, std::uint64_t) override { return Step::goOn; }

  int count = 0;
};

TEST(ThreadedWalk, PassesOnPointsWhileTheCallerHasNothingToWalk) {
  ShortWalk walk(std::make_shared<std::atomic<bool>>(false), true);
  Counter visitor;
  EXPECT_EQ(walk.run(visitor, inThreads(2)), EnumerationEnd::complete);
  EXPECT_EQ(visitor.count, ShortWalk::pointsBelow);
}

/// Throws when the first point comes from another thread.
class Thrower : public EnumerationVisitor {
 public:
  Step found(const Point&) override { throw std::runtime_error("of the visitor"); }
  Step progress(double, std::uint64_t) override { return Step::goOn; }
};

TEST(ThreadedWalk, EndsAllThreadsIfTheVisitorThrows) {
  FakeWalk walk(true, false);
  Thrower visitor;
  EXPECT_THROW(walk.run(visitor, inThreads(3)), std::runtime_error);
}

}  // namespace
}  // namespace starsift

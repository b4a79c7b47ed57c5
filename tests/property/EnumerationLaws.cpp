// Every walk finds the points of a coset in a box that brute force finds.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "search/enumeration/CosetReduction.h"
#include "search/enumeration/Enumeration.h"
#include "support/fixtures/CollectingVisitor.h"
#include "support/generators/CosetGenerators.h"
#include "support/oracles/BoxPoints.h"

namespace starsift {
namespace {

using test::CollectingVisitor;
using Points = std::set<std::vector<ZZ>>;

/// Cosets of one case, so that a run sees thousands.
constexpr std::size_t cosetsPerCase = 20;

auto someOf(rc::Gen<BoxCoset> cosets) {
  return rc::gen::container<std::vector<BoxCoset>>(cosetsPerCase, std::move(cosets));
}

BoxCoset reduced(BoxCoset coset) {
  RC_ASSERT(reduceCoset(coset, [] { return true; }));
  return coset;
}

/// Floating point may refuse a basis that is far from reduced.
enum class Refusal { none, allowed };

template <class Real>
void checkFloating(const BoxCoset& coset, const Points& expected, Refusal refusal) {
  if (isEmptyBox(coset)) return;
  const auto walk = test::floatingWalk<Real>(coset);
  RC_ASSERT(walk || refusal == Refusal::allowed);
  if (walk) RC_ASSERT(test::pointsOf(*walk) == expected);
}

void checkAllWalks(const BoxCoset& coset, const Points& expected, Refusal refusal) {
  checkFloating<double>(coset, expected, refusal);
  checkFloating<long double>(coset, expected, refusal);
  ExactWalk exact(coset);
  RC_ASSERT(test::pointsOf(exact) == expected);
}

RC_GTEST_PROP(Enumeration, FindsWhatBruteForceFinds, ()) {
  for (const BoxCoset& coset : *someOf(test::arbitraryCoset()))
    checkAllWalks(coset, test::pointsByBruteForce(coset), Refusal::allowed);
}

RC_GTEST_PROP(Enumeration, FindsTheSamePointsOfAReducedCoset, ()) {
  for (const BoxCoset& coset : *someOf(test::arbitraryCoset()))
    checkAllWalks(reduced(coset), test::pointsByBruteForce(coset), Refusal::none);
}

// Corners of the box lie exactly on the bounds of the cuts.
RC_GTEST_PROP(Enumeration, FindsEveryCorner, ()) {
  const BoxCoset coset = *test::arbitraryCornerCoset();
  const Points expected = test::pointsByBruteForce(coset);
  checkAllWalks(coset, expected, Refusal::allowed);
  checkAllWalks(reduced(coset), expected, Refusal::none);
}

void checkStretched(int digits, bool reduces) {
  const auto [small, factors] = *test::arbitraryStretchedCoset(digits);
  Points expected;
  for (std::vector<ZZ> point : test::pointsByBruteForce(small)) {
    for (std::size_t j = 0; j < point.size(); ++j) point[j] *= factors[j];
    expected.insert(std::move(point));
  }
  const BoxCoset large = test::stretched(small, factors);
  Enumeration enumeration(reduces ? reduced(large) : large);
  CollectingVisitor visitor;
  RC_ASSERT(enumeration.run(visitor, {}) == EnumerationEnd::complete);
  RC_ASSERT(visitor.points == expected);
}

// Double, long double and rationals all have their turn.
RC_GTEST_PROP(Enumeration, FindsPointsOfLongNumbers, ()) {
  for (const int digits : {5, 12, 18, 30}) {
    checkStretched(digits, true);
    checkStretched(digits, false);
  }
}

/// Looks for the least value of the last coordinate.
class Minimiser : public EnumerationVisitor {
 public:
  Minimiser(EnumerationWalk& walk, const BoxCoset& coset)
      : walk_(walk), coset_(coset), last_(coset.point.size() - 1) {}

  Step found(const std::vector<ZZ>& point) override {
    EXPECT_TRUE(!best || point[last_] < *best) << "a point outside of the narrowed box";
    best = point[last_];
    walk_.narrow(last_, coset_.lower[last_], point[last_] - ZZ(1));
    return Step::goOn;
  }
  Step progress(double, std::uint64_t) override { return Step::goOn; }

  std::optional<ZZ> best;

 private:
  EnumerationWalk& walk_;
  const BoxCoset& coset_;
  std::size_t last_;
};

void checkMinimum(std::unique_ptr<EnumerationWalk> walk, const BoxCoset& coset,
                  const EnumerationSettings& settings = {}) {
  RC_ASSERT(static_cast<bool>(walk));
  std::optional<ZZ> least;
  for (const std::vector<ZZ>& point : test::pointsByBruteForce(coset))
    if (!least || point.back() < *least) least = point.back();
  Minimiser visitor(*walk, coset);
  RC_ASSERT(walk->run(visitor, settings) == EnumerationEnd::complete);
  RC_ASSERT(visitor.best == least);
  // The box stays narrowed.
  CollectingVisitor second;
  RC_ASSERT(walk->run(second, {}) == EnumerationEnd::complete);
  RC_ASSERT(second.points.empty());
}

RC_GTEST_PROP(Enumeration, NarrowingLeadsToTheMinimum, ()) {
  for (const BoxCoset& drawn : *someOf(test::arbitraryCoset())) {
    if (drawn.point.empty() || isEmptyBox(drawn)) continue;
    const BoxCoset coset = reduced(drawn);
    checkMinimum(test::floatingWalk<double>(coset), coset);
    checkMinimum(test::floatingWalk<long double>(coset), coset);
    checkMinimum(std::make_unique<ExactWalk>(coset), coset);
  }
}

/// So many threads that exchange subtrees all the time.
EnumerationSettings threadSettings() {
  EnumerationSettings settings;
  settings.threads = *rc::gen::inRange(1U, 6U);
  settings.nodesPerReport = *rc::gen::elementOf(std::vector<std::uint64_t>{1, 2, 5, 50});
  return settings;
}

void checkThreads(std::unique_ptr<EnumerationWalk> walk, const Points& expected) {
  CollectingVisitor visitor;
  RC_ASSERT(walk->run(visitor, threadSettings()) == EnumerationEnd::complete);
  RC_ASSERT(!visitor.isDouble);
  RC_ASSERT(visitor.points == expected);
}

RC_GTEST_PROP(Enumeration, FindsTheSamePointsWhateverTheNumberOfThreads, ()) {
  std::vector<BoxCoset> cosets = *someOf(test::arbitraryCoset());
  cosets.push_back(*test::arbitraryCornerCoset());
  for (const BoxCoset& drawn : cosets) {
    if (isEmptyBox(drawn)) continue;
    const BoxCoset coset = reduced(drawn);
    const Points expected = test::pointsByBruteForce(coset);
    checkThreads(test::floatingWalk<double>(coset), expected);
    checkThreads(test::floatingWalk<long double>(coset), expected);
    checkThreads(std::make_unique<ExactWalk>(coset), expected);
  }
}

RC_GTEST_PROP(Enumeration, NarrowingLeadsToTheMinimumInSeveralThreads, ()) {
  for (const BoxCoset& drawn : *someOf(test::arbitraryCoset())) {
    if (drawn.point.empty() || isEmptyBox(drawn)) continue;
    const BoxCoset coset = reduced(drawn);
    checkMinimum(test::floatingWalk<double>(coset), coset, threadSettings());
    checkMinimum(std::make_unique<ExactWalk>(coset), coset, threadSettings());
  }
}

RC_GTEST_PROP(Enumeration, APrunedTryFindsOnlyPointsOfTheCoset, ()) {
  const BoxCoset coset = reduced(*test::arbitraryCornerCoset());
  const Points expected = test::pointsByBruteForce(coset);
  EnumerationSettings settings;
  settings.pruning = *rc::gen::elementOf(std::vector<double>{0.05, 0.3, 0.6});
  ExactWalk exact(coset);
  const auto floating = test::floatingWalk<double>(coset);
  for (EnumerationWalk* walk : {static_cast<EnumerationWalk*>(&exact), floating.get()}) {
    CollectingVisitor visitor;
    const EnumerationEnd end = walk->run(visitor, settings);
    RC_ASSERT(end == EnumerationEnd::pruned || visitor.points == expected);
    RC_ASSERT(std::includes(expected.begin(), expected.end(), visitor.points.begin(),
                            visitor.points.end()));
    // The tree is complete again.
    RC_ASSERT(test::pointsOf(*walk) == expected);
  }
}

}  // namespace
}  // namespace starsift

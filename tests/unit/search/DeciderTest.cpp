#include "search/decide/Decider.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/VectorText.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

/// Goes on for ever.
class Listener : public DecisionListener {
 public:
  Step found(const Star<QQ>& star) override {
    stars.push_back(star);
    return Step::goOn;
  }
  Step progress(double /*share*/, std::uint64_t /*nodes*/) override { return Step::goOn; }

  std::vector<Star<QQ>> stars;
};

/// Weights near multiples of 11070, little above their Frobenius number: the tree has millions of
/// nodes, but its first leaves are solutions.
constexpr std::string_view knapsack = R"([ ] [ ]
[ [ 11070 11071 33212 44278 44281 44282 66421 66422 77489 ] ]
[ 81693011 ]
[ ] [ ] [ ] [ ]
[ 0 0 0 0 0 0 0 0 0 ] [ 0 0 0 0 0 0 0 0 0 ] [ inf inf inf inf inf inf inf inf inf ])";

TEST(Decider, TreeThatSeemsLargeIsLeftWithTheFirstSolutionOfAShortWalk) {
  Decision decision(test::problemFrom(knapsack));
  Listener listener;
  DeciderSettings settings;
  settings.wanted = 1;
  const Decided decided = Decider(decision, listener, settings).run();
  EXPECT_EQ(decided.undecided, Undecided::enough);
  EXPECT_EQ(listener.stars.size(), 1U);
  EXPECT_LT(decided.nodes, 1000U);
}

TEST(Decider, ShortWalkTellsEachSolutionOnce) {
  Decision decision(test::problemFrom(knapsack));
  Listener listener;
  DeciderSettings settings;
  settings.wanted = 500;
  Decider(decision, listener, settings).run();
  std::set<std::string> texts;
  for (const Star<QQ>& star : listener.stars) {
    std::string text;
    appendText(text, star.x(), 0);
    EXPECT_TRUE(texts.insert(text).second) << text;
  }
  EXPECT_EQ(texts.size(), 500U);
}

}  // namespace
}  // namespace starsift

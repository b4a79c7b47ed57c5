// Walks over small problems of every feature against all points of their boxes, over GMP's
// rationals.
#include <gtest/gtest.h>

#include <vector>

#include "FoundSolutions.h"
#include "search/jump/JumpSearch.h"

namespace starsift {
namespace {

using oracle::Problem;
using test::checkOverProblems;
using test::problemCount;
using test::SmallProblem;

/// Checks what it is told of, for one turn.
class Listener : public JumpListener {
 public:
  explicit Listener(const Problem& problem) : problem_(problem) {}

  Step found(const Star<QQ>& star) override {
    test::checkedPoint(problem_, star);
    if (!norms.empty()) {
      RC_ASSERT(!problem_.targets.empty());
      RC_ASSERT(star.targetNorm < norms.back());
    }
    norms.push_back(star.targetNorm);
    return Step::goOn;
  }

  Step progress() override { return turns_++ == 0 ? Step::goOn : Step::stop; }

  std::vector<QQ> norms;

 private:
  const Problem& problem_;
  int turns_ = 0;
};

TEST(Jumping, FindsSolutionsOnlyAndBetterAndBetterOnes) {
  int solvable = 0;
  int found = 0;
  checkOverProblems([&](const SmallProblem& small) {
    const Vanu<QQ> problem = small.record();
    JumpSearch search(problem, 1);
    if (!search.isReady()) return;
    Listener listener(small.problem);
    search.run(listener);
    if (test::solutionsAround(small.problem).empty()) return;
    ++solvable;
    if (!listener.norms.empty()) ++found;
  });
  EXPECT_GE(solvable, problemCount / 8);
  EXPECT_GE(found, solvable * 9 / 10);
}

TEST(Jumping, FindsBetterSolutionsThanTheKnownOneOnly) {
  int improved = 0;
  checkOverProblems([&](const SmallProblem& small) {
    if (small.problem.targets.empty()) return;
    const Vanu<QQ> problem = small.record();
    JumpSearch search(problem, 1);
    if (!search.isReady()) return;
    const QQ known(3, 2);
    search.setKnown(known);
    Listener listener(small.problem);
    search.run(listener);
    for (const QQ& norm : listener.norms) RC_ASSERT(norm < known);
    if (!listener.norms.empty()) ++improved;
  });
  EXPECT_GE(improved, problemCount / 64);
}

}  // namespace
}  // namespace starsift

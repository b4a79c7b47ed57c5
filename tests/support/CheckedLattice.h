// Tests of vectors that go through the check of a lattice, as it stands after generation.
#pragma once

#include <string>

#include "support/CheckVectors.h"
#include "support/LatticeOfProblem.h"
#include "support/TextOf.h"

namespace starsift::test {

/// The bits of a solution that is new.
constexpr unsigned filed = CHECK_SOLUTION | CHECK_STORED;

template <class T>
class CheckedLattice : public LatticeOfProblem<T> {
 protected:
  void use(const char* problem, LatticeStage stage = LatticeStage::full) {
    this->normalise(problem);
    generateByHand(this->live, stage);
    this->live.params.sol = 0;
    this->live.params.pair = false;
  }

  unsigned check(const Vector<T>& vector, std::int64_t time = 0) {
    return this->live.checkSolution(vector, false, time, true);
  }
  unsigned checkPoint(int x, int y) { return check(this->image({T(x), T(y)})); }

  static Vector<T> negative(Vector<T> vector) {
    for (T& entry : vector) entry = T() - entry;
    return vector;
  }

  std::string stored(Index i) const { return textOf(this->pointOf(this->live.solutions[i])); }
};

}  // namespace starsift::test

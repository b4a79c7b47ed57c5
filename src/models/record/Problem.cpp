#include "models/record/Problem.h"

#include <utility>

namespace starsift {

Problem problemOf(Model model) {
  Problem problem;
  const Objective& objective = model.objective;
  if (!objective.columns.empty()) {
    const bool isMaximum = objective.sense == ObjectiveSense::maximise;
    const QQ goal = isMaximum ? QQ::infinity() : -QQ::infinity();
    problem.targets.push_back({goal, goal, objective.columns, objective.coefficients});
  }
  problem.model = std::move(model);
  return problem;
}

}  // namespace starsift

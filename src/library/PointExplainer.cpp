#include "library/PointExplainer.h"

#include <utility>

#include "models/check/PointCheck.h"
#include "models/read/ProblemReader.h"

namespace starsift {

struct PointExplainer::Checked {
  explicit Checked(Problem model) : problem(std::move(model)), check(problem) {}

  Problem problem;
  PointCheck check;
};

PointExplainer::PointExplainer(const Vanu<QQ>& problem)
    : checked_(std::make_unique<Checked>(problemOf(problem))) {}

PointExplainer::~PointExplainer() = default;

std::vector<BrokenPart> PointExplainer::explain(const std::vector<QQ>& x) const {
  std::vector<BrokenPart> parts;
  for (Violation& violation : checked_->check.check(x).violations)
    parts.push_back({violation.kind, violation.index, std::move(violation.amount)});
  return parts;
}

}  // namespace starsift

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "library/GivenPoint.h"
#include "library/Hosted.h"
#include "library/Inside.h"
#include "library/PointExplainer.h"
#include "stars/StarCheck.h"

namespace starsift {
inline namespace v1 {

namespace {

Part partOf(ViolationKind kind) {
  switch (kind) {
    case ViolationKind::row:
      return Part::row;
    case ViolationKind::lowerBound:
      return Part::lowerBound;
    case ViolationKind::upperBound:
      return Part::upperBound;
    case ViolationKind::step:
      break;
  }
  return Part::step;
}

}  // namespace

struct Checker::Prepared {
  explicit Prepared(const ProblemRecord& source)
      : problem(vanuOf(source)),
        checker(problem),
        explainer(problem),
        rowOrder(rowsByKind(source)) {
    for (std::size_t j = 0; j < source.variables.size(); ++j)
      variableNames.push_back(variableName(source, j));
    for (const RowRecord& row : source.rows) rowNames.push_back(nameOf(row));
  }

  std::size_t variableCount() const { return variableNames.size(); }

  /// Integers break no step, so that a solution of integers breaks nothing.
  Verdict judge(const std::vector<QQ>& x) {
    Star<QQ> star(static_cast<Index>(x.size()));
    std::copy(x.begin(), x.end(), star.begin());
    Verdict verdict = verdictOf(checker.judge(star));
    const auto isInteger = [](const QQ& value) { return value.isInteger(); };
    if (!verdict.isSolution || !std::all_of(x.begin(), x.end(), isInteger)) explain(x, verdict);
    return verdict;
  }

  Verdict judge(std::span<const std::int64_t> x) {
    constexpr std::int64_t bound = std::int64_t{1} << 62U;
    const auto isSmall = [](std::int64_t value) { return value > -bound && value < bound; };
    if (!std::all_of(x.begin(), x.end(), isSmall)) return judge(rationals(x));
    SmallPoint& point = checker.point().becomeSmall();
    point.components.assign(x.begin(), x.end());
    point.magnitude = 0;
    for (const std::int64_t value : x) point.magnitude = std::max(point.magnitude, std::abs(value));
    Verdict verdict = verdictOf(checker.judgePoint());
    if (!verdict.isSolution) explain(rationals(x), verdict);
    return verdict;
  }

  static std::vector<QQ> rationals(std::span<const std::int64_t> x) {
    std::vector<QQ> result;
    for (const std::int64_t value : x) result.emplace_back(static_cast<long>(value));
    return result;
  }

  Verdict verdictOf(const StarVerdict<QQ>& judged) const {
    Verdict verdict;
    verdict.isSolution = judged.isSolution;
    if (!judged.isSolution || !checker.hasTargets()) return verdict;
    verdict.targetValues = Inside::numbers(judged.targetValues);
    verdict.targetNorm = Inside::number(judged.norms.target);
    verdict.slackNorm = Inside::number(judged.norms.slack);
    return verdict;
  }

  void explain(const std::vector<QQ>& x, Verdict& verdict) const {
    for (const BrokenPart& part : explainer.explain(x)) {
      const bool isRow = part.kind == ViolationKind::row;
      const std::size_t index = isRow ? rowOrder[part.index] : part.index;
      verdict.violations.push_back({partOf(part.kind), index,
                                    (isRow ? rowNames : variableNames)[index],
                                    Inside::number(part.amount)});
    }
  }

  Vanu<QQ> problem;
  StarChecker<QQ> checker;
  PointExplainer explainer;
  /// The row of the host that is row i of the explainer.
  std::vector<std::size_t> rowOrder;
  std::vector<std::string> variableNames;
  std::vector<std::string> rowNames;
};

Checker::Checker(const Problem& problem)
    : prepared_(hosted([&] { return std::make_unique<Prepared>(Inside::record(problem)); })) {}
Checker::Checker(Checker&& other) noexcept = default;
Checker& Checker::operator=(Checker&& other) noexcept = default;
Checker::~Checker() = default;

Verdict Checker::check(std::span<const Number> point) {
  return hosted([&] {
    requirePoint(point, prepared_->variableCount());
    std::vector<QQ> x(point.size());
    std::transform(point.begin(), point.end(), x.begin(), Inside::exact);
    return prepared_->judge(x);
  });
}

Verdict Checker::check(std::span<const std::int64_t> point) {
  return hosted([&] {
    requireLength(point.size(), prepared_->variableCount());
    return prepared_->judge(point);
  });
}

std::vector<Verdict> check(const Problem& problem, std::span<const std::vector<Number>> points) {
  Checker checker(problem);
  std::vector<Verdict> verdicts;
  verdicts.reserve(points.size());
  for (const std::vector<Number>& point : points) verdicts.push_back(checker.check(point));
  return verdicts;
}

Verdict check(const Problem& problem, std::span<const Number> point) {
  return Checker(problem).check(point);
}

}  // namespace v1
}  // namespace starsift

#include "problem/TightenBounds.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "numbers/VectorQQ.h"
#include "problem/DecimalSteps.h"

namespace starsift {

namespace {

/// Cycles of rows may narrow a wide range by one step per round: further rounds aren't worth
/// their time.
constexpr int maxRounds = 20;

/// Entries read in all rounds but the first, at most: a second or two with long fractions.
constexpr std::size_t maxEntries = 2'000'000;

/// The values of a variable, counted in its steps: integers, unless it is a constant.
struct Range {
  QQ least;
  QQ greatest;

  bool isConstant() const { return least == greatest; }
  bool isFinite() const { return !least.isInf() && !greatest.isInf(); }
};

/// One coefficient of a row, not 0.
struct Term {
  std::size_t variable;
  QQ coefficient;
};

/// sum of the terms <= limit, a finite one.
struct Limit {
  std::vector<Term> terms;
  QQ limit;
};

/// The end of the range that makes the term least.
const QQ& leastEnd(const Term& term, const Range& range) {
  return term.coefficient.sign() ? range.least : range.greatest;
}

/// The least value of a sum: infinite terms, which are all -inf, are counted.
struct LeastSum {
  QQ finite;
  std::size_t infinite = 0;
};

LeastSum leastSum(const Limit& row, const std::vector<Range>& ranges) {
  LeastSum sum;
  for (const Term& term : row.terms) {
    const QQ& end = leastEnd(term, ranges[term.variable]);
    if (end.isInf())
      ++sum.infinite;
    else
      addProduct(sum.finite, term.coefficient, end);
  }
  return sum;
}

enum class Outcome { unchanged, narrowed, contradiction };

/// Narrows the range of a variable to coefficient * variable <= room.
Outcome narrow(Range& range, const QQ& coefficient, const QQ& room) {
  const QQ end = room / coefficient;
  if (coefficient.sign()) {
    if (range.greatest <= end) return Outcome::unchanged;
    range.greatest = floor(end);
  } else {
    if (range.least >= end) return Outcome::unchanged;
    range.least = ceil(end);
  }
  return range.least <= range.greatest ? Outcome::narrowed : Outcome::contradiction;
}

/// Narrows the range of every variable by the least value of the other terms.
Outcome narrow(std::vector<Range>& ranges, const Limit& row) {
  const LeastSum sum = leastSum(row, ranges);
  if (sum.infinite == 0 && sum.finite > row.limit) return Outcome::contradiction;
  if (sum.infinite > 1) return Outcome::unchanged;
  Outcome outcome = Outcome::unchanged;
  for (const Term& term : row.terms) {
    Range& range = ranges[term.variable];
    const QQ& own = leastEnd(term, range);
    if (range.isConstant() || (sum.infinite == 1 && !own.isInf())) continue;
    QQ room = row.limit - sum.finite;
    if (!own.isInf()) addProduct(room, term.coefficient, own);
    const Outcome one = narrow(range, term.coefficient, room);
    if (one == Outcome::contradiction) return one;
    if (one == Outcome::narrowed) outcome = one;
  }
  return outcome;
}

std::size_t entriesOf(const std::vector<Limit>& rows) {
  std::size_t count = 1;
  for (const Limit& row : rows) count += row.terms.size();
  return count;
}

/// False if the rows contradict the ranges.
bool propagate(std::vector<Range>& ranges, const std::vector<Limit>& rows) {
  const auto rounds = 1 + std::min<std::size_t>(maxRounds - 1, maxEntries / entriesOf(rows));
  for (std::size_t round = 1; round <= rounds; ++round) {
    bool isNarrowed = false;
    for (const Limit& row : rows) {
      const Outcome outcome = narrow(ranges, row);
      if (outcome == Outcome::contradiction) return false;
      isNarrowed = isNarrowed || outcome == Outcome::narrowed;
    }
    if (!isNarrowed) return true;
  }
  return true;
}

/// The ranges given by the bounds, rounded inwards; empty if one of the ranges is.
std::optional<std::vector<Range>> rangesOf(const Vanu<QQ>& problem, const std::vector<QQ>& steps) {
  std::vector<Range> ranges;
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    const QQ& unit = steps[static_cast<std::size_t>(j - 1)];
    if (problem.lx[j] == QQ::infinity() || problem.rx[j] == -QQ::infinity()) return std::nullopt;
    Range range{problem.lx[j] * unit, problem.rx[j] * unit};
    if (!range.isConstant()) range = {ceil(range.least), floor(range.greatest)};
    if (range.least > range.greatest) return std::nullopt;
    ranges.push_back(std::move(range));
  }
  return ranges;
}

/// The entries of sign * row that aren't 0, per step of their variables.
std::vector<Term> termsOf(const Vector<QQ>& row, const QQ& sign, const std::vector<QQ>& steps) {
  std::vector<Term> terms;
  for (std::size_t j = 0; j < steps.size(); ++j) {
    const QQ& entry = row[static_cast<Index>(j) + 1];
    if (!entry.isZero()) terms.push_back({j, sign * entry / steps[j]});
  }
  return terms;
}

/// Rows with upper limits; rows with lower limits are negated.
class Limits {
 public:
  explicit Limits(const std::vector<QQ>& steps) : steps_(steps) {}

  void add(const Vector<QQ>& row, const QQ& lower, const QQ& upper) {
    if (!upper.isInf()) limits_.push_back({termsOf(row, QQ::one(), steps_), upper});
    if (!lower.isInf()) limits_.push_back({termsOf(row, QQ::minusOne(), steps_), -lower});
  }
  const std::vector<Limit>& all() const { return limits_; }

 private:
  const std::vector<QQ>& steps_;
  std::vector<Limit> limits_;
};

/// The rows that limit the variables; rows with an infinite limit are left out.
Limits limitsOf(const Vanu<QQ>& problem, const std::vector<QQ>& steps) {
  Limits limits(steps);
  for (Index i = 1; i <= problem.bg.dimension(); ++i)
    if (!problem.qg.isSet() || problem.qg[i].isZero())
      limits.add(problem.Ag[i], problem.bg[i], problem.bg[i]);
  for (Index i = 1; i <= problem.lu.dimension(); ++i)
    limits.add(problem.Au[i], problem.lu[i], problem.ru[i]);
  return limits;
}

bool isHalved(const Range& before, const Range& after) {
  return before.isFinite() && !before.isConstant() &&
         QQ(2) * (after.greatest - after.least) <= before.greatest - before.least;
}

/// The least value of sign * row over the ranges; -inf if there is none.
QQ leastValue(const Vector<QQ>& row, const QQ& sign, const std::vector<QQ>& steps,
              const std::vector<Range>& ranges) {
  const LeastSum sum = leastSum({termsOf(row, sign, steps), QQ()}, ranges);
  return sum.infinite > 0 ? -QQ::infinity() : sum.finite;
}

/// Sets the infinite side of each one-sided inequation to what the ranges imply.
void closeRows(Vanu<QQ>& problem, const std::vector<QQ>& steps, const std::vector<Range>& ranges) {
  for (Index i = 1; i <= problem.lu.dimension(); ++i) {
    QQ& lower = problem.lu[i];
    QQ& upper = problem.ru[i];
    if (lower == -QQ::infinity() && !upper.isInf())
      lower = leastValue(problem.Au[i], QQ::one(), steps, ranges);
    else if (upper == QQ::infinity() && !lower.isInf())
      upper = -leastValue(problem.Au[i], QQ::minusOne(), steps, ranges);
  }
}

/// Replaces the bounds of a variable by its range.
void setBounds(Vanu<QQ>& problem, std::size_t j, const Range& range, const QQ& step) {
  problem.lx[static_cast<Index>(j) + 1] = range.least / step;
  problem.rx[static_cast<Index>(j) + 1] = range.greatest / step;
}

}  // namespace

bool tightenBounds(Vanu<QQ>& problem) {
  const auto steps = stepsPerUnit(problem.dx);
  if (!steps) return true;
  const auto before = rangesOf(problem, *steps);
  if (!before) return true;
  std::vector<Range> ranges = *before;
  if (!propagate(ranges, limitsOf(problem, *steps).all())) return false;
  closeRows(problem, *steps, ranges);
  for (std::size_t j = 0; j < ranges.size(); ++j)
    if (isHalved((*before)[j], ranges[j])) setBounds(problem, j, ranges[j], (*steps)[j]);
  return true;
}

BoundsImplied implyBounds(Vanu<QQ>& problem) {
  const auto steps = stepsPerUnit(problem.dx);
  if (!steps) return BoundsImplied::unknownSteps;
  std::optional<std::vector<Range>> ranges = rangesOf(problem, *steps);
  if (!ranges || !propagate(*ranges, limitsOf(problem, *steps).all()))
    return BoundsImplied::contradiction;
  for (std::size_t j = 0; j < ranges->size(); ++j) setBounds(problem, j, (*ranges)[j], (*steps)[j]);
  return BoundsImplied::narrowed;
}

}  // namespace starsift

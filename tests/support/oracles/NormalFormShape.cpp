// The shape of a normal form: formFaults() of NormalFormOracle.h.

#include <algorithm>
#include <sstream>

#include "support/oracles/NormalFormOracle.h"

namespace starsift::oracle {

namespace {

bool isInteger(const mpq_class& value) {
  return value.get_den() == 1;
}

bool allIntegers(const Point& point) {
  return std::all_of(point.begin(), point.end(), isInteger);
}

/// The rank of the rows, by elimination.
std::size_t rankOf(std::vector<Point> rows) {
  std::size_t rank = 0;
  const std::size_t columns = rows.empty() ? 0 : rows.front().size();
  for (std::size_t column = 0; column < columns && rank < rows.size(); ++column) {
    const auto begin = rows.begin() + static_cast<std::ptrdiff_t>(rank);
    const auto pivot =
        std::find_if(begin, rows.end(), [&](const Point& row) { return row[column] != 0; });
    if (pivot == rows.end()) continue;
    std::iter_swap(begin, pivot);
    for (std::size_t i = rank + 1; i < rows.size(); ++i) {
      const mpq_class factor = rows[i][column] / rows[rank][column];
      for (std::size_t j = column; j < columns; ++j) rows[i][j] -= factor * rows[rank][j];
    }
    ++rank;
  }
  return rank;
}

std::vector<Point> withoutDependent(const std::vector<Point>& rows) {
  std::vector<Point> kept;
  for (const Point& row : rows) {
    kept.push_back(row);
    if (rankOf(kept) < kept.size()) kept.pop_back();
  }
  return kept;
}

/// Collects what is wrong.
class Inspector {
 public:
  Inspector(const Problem& problem, const PlainRecord& normal)
      : problem_(problem), normal_(normal) {}

  std::string faults() {
    checkSizes();
    if (!faults_.str().empty()) return faults_.str();
    checkVariables();
    checkRemoved();
    checkTargets();
    checkAggregate();
    checkEquations();
    checkLiftedRows();
    checkOrder();
    checkInequations();
    return faults_.str();
  }

 private:
  void require(bool holds, const std::string& claim) {
    if (!holds) faults_ << "not so: " << claim << "\n";
  }

  std::size_t moduli() const {
    return static_cast<std::size_t>(
        std::count_if(normal_.equations.begin(), normal_.equations.end(),
                      [](const Equation& row) { return row.modulus != 0; }));
  }

  std::size_t rowLength() const { return normal_.variables() + moduli(); }

  /// What the other checks take for granted.
  void checkSizes() {
    const std::size_t n = normal_.variables();
    const std::vector<Target>& targets = problem_.targets;
    const auto finite = static_cast<std::size_t>(
        std::count_if(targets.begin(), targets.end(),
                      [](const Target& target) { return target.goal.infinite == 0; }));
    const auto oneSided = static_cast<std::size_t>(std::count_if(
        problem_.inequations.begin(), problem_.inequations.end(), [](const Inequation& row) {
          return (row.lower.infinite != 0) != (row.upper.infinite != 0);
        }));
    std::size_t left = 0;
    for (std::size_t j = 0; j < problem_.lower.size(); ++j)
      left += rangeOf(problem_, j).single ? 0 : 1;
    require(normal_.deviations == 2 * finite, "every target to reach has two deviations");
    require(normal_.slacks == oneSided, "every inequation with one bound has a slack");
    require(n == left + oneSided + 2 * finite, "variables that aren't fixed are left");
    require(normal_.lower.size() == n && normal_.decimals.size() == n &&
                normal_.kinds.size() == n && normal_.units.size() >= n,
            "every variable has two bounds, decimals, a kind and a unit");
    require(normal_.shift.size() == rowLength(), "there is a shift per column of an equation");
    require(normal_.equations.size() >= normal_.liftedRows(), "lifted rows are all there");
    require(normal_.targets.size() == targets.size() && normal_.thresholds.size() == targets.size(),
            "there are as many targets and thresholds as before");
    require(allOfLength(normal_.targets, n), "targets have a column per variable");
    require(allOfLength(normal_.equations, rowLength()) &&
                allOfLength(normal_.inequations, rowLength()),
            "equations and inequations have a column per variable and modulus");
  }

  template <class Rows>
  static bool allOfLength(const Rows& rows, std::size_t length) {
    return std::all_of(rows.begin(), rows.end(),
                       [&](const auto& row) { return row.row.size() == length; });
  }

  void checkVariables() {
    const std::size_t n = normal_.variables();
    for (std::size_t j = 0; j < n; ++j) {
      const Bound& lower = normal_.lower[j];
      const Bound& upper = normal_.upper[j];
      require(lower == Bound{0, 0} || lower == Bound{-1, 0}, "variables start at 0 or nowhere");
      require(upper == Bound{1, 0} || (lower.infinite == 0 && upper.infinite == 0 &&
                                       upper.value > 0 && isInteger(upper.value)),
              "variables end at a positive integer or nowhere");
      require(normal_.kinds[j] == freedomDegree(lower.infinite != 0 ? -QQ::infinity() : QQ(0),
                                                upper.infinite != 0 ? QQ::infinity() : QQ(1)),
              "the kind of a variable is that of its bounds");
    }
    require(allIntegers(normal_.shift), "shifts are integers");
    for (std::size_t j = normal_.originals(); j < normal_.shift.size(); ++j)
      require(normal_.shift[j] == 0, "slacks, deviations and moduli aren't shifted");
  }

  /// Fixed and swapped variables and the decimals of the others.
  void checkRemoved() {
    std::vector<std::pair<std::size_t, mpq_class>> fixed;
    std::vector<std::size_t> swapped;
    Point decimals;
    for (std::size_t j = 0; j < problem_.lower.size(); ++j) {
      const Range range = rangeOf(problem_, j);
      if (range.single) {
        fixed.emplace_back(j, *range.least);
        continue;
      }
      if (!range.least && range.greatest) swapped.push_back(decimals.size());
      decimals.emplace_back(problem_.decimals.empty() ? 0 : problem_.decimals[j]);
    }
    decimals.resize(normal_.variables());
    require(normal_.fixed == fixed, "variables with one value are removed with it");
    require(normal_.swapped == swapped, "variables that are free below alone are swapped");
    require(normal_.decimals == decimals, "decimals stay with their variables");
  }

  void checkTargets() {
    const std::vector<std::size_t> order = targetOrder(problem_);
    const mpq_class factor = targetFactor(problem_, normal_);
    for (std::size_t i = 0; i < order.size(); ++i) {
      const Target& before = problem_.targets[order[i]];
      const Target& after = normal_.targets[i];
      require(allIntegers(after.row), "targets are integer");
      const Bound goal{before.goal.infinite == 0 ? -1 : before.goal.infinite, 0};
      require(after.goal == goal, "targets to reach are minimised, others stay");
      Bound threshold = problem_.thresholds.empty() ? before.goal : problem_.thresholds[order[i]];
      if (threshold.infinite == 0) {
        if (before.goal.infinite == 0) threshold = {-1, 0};
        threshold.value *= factor;
        if (threshold.infinite != 0) threshold.value = 0;
      }
      require(normal_.thresholds[i] == threshold, "thresholds have the factor of the targets");
    }
  }

  void checkAggregate() {
    Point sum(normal_.variables());
    for (const Target& target : normal_.targets)
      for (std::size_t j = 0; j < std::min(sum.size(), target.row.size()); ++j)
        sum[j] += target.row[j] * (target.goal.infinite > 0 ? 1 : -1);
    require(normal_.aggregate == sum, "the aggregate is the sum of the targets with their signs");
    const bool hasGoal =
        std::any_of(problem_.targets.begin(), problem_.targets.end(),
                    [](const Target& target) { return target.goal.infinite == 0; });
    require(!normal_.hasTargetRange || !hasGoal, "targets to reach have no range");
  }

  void checkEquations() {
    std::vector<Point> rows;
    std::size_t modulus = normal_.variables();
    for (const Equation& row : normal_.equations) {
      require(allIntegers(row.row) && isInteger(row.value), "equations are integer");
      for (std::size_t j = normal_.variables(); j < rowLength(); ++j)
        require((row.row[j] != 0) == (row.modulus != 0 && j == modulus),
                "every congruence has its own column");
      if (row.modulus != 0) ++modulus;
      rows.push_back(row.row);
      rows.back().push_back(row.value);
    }
    require(rankOf(rows) == rows.size(), "equations are independent");
    if (!rows.empty())
      require(normal_.equationColumns == static_cast<Index>(rowLength()),
              "the equations know their columns");
  }

  /// The row of the problem over the variables that are left, without what the others
  /// are worth, in whole numbers: value, modulus, coefficients.
  Point integerRow(const Equation& equation) const {
    Point row{equation.value, equation.modulus};
    std::size_t left = 0;
    for (std::size_t j = 0; j < equation.row.size(); ++j) {
      const Range range = rangeOf(problem_, j);
      if (range.single) {
        row[0] -= equation.row[j] * *range.least;
        continue;
      }
      const bool swapped = std::count(normal_.swapped.begin(), normal_.swapped.end(), left++) != 0;
      row.push_back(equation.row[j] * range.step * (swapped ? -1 : 1));
    }
    mpz_class factor = 1;
    for (const mpq_class& entry : row)
      mpz_lcm(factor.get_mpz_t(), factor.get_mpz_t(), entry.get_den().get_mpz_t());
    for (mpq_class& entry : row) entry *= factor;
    return row;
  }

  /// The equations of the problem and then its equalities among the inequations, but for
  /// those that say nothing new, stand first and as they are. A modulus has a column of
  /// its own and so makes its row new.
  void checkOrder() {
    std::vector<Equation> equations = problem_.equations;
    for (const Inequation& row : problem_.inequations)
      if (row.lower == row.upper) equations.push_back({row.row, row.lower.value, 0});
    std::vector<Point> rows;
    for (const Equation& equation : equations) {
      Point row = integerRow(equation);
      row.resize(2 + normal_.originals() + equations.size());
      if (row[1] != 0) row[2 + normal_.originals() + rows.size()] = row[1];
      rows.push_back(row);
    }
    const std::vector<Point> kept = withoutDependent(rows);
    require(normal_.equations.size() >= kept.size() + normal_.liftedRows(),
            "no equation is lost that says something new");
    if (normal_.equations.size() < kept.size() + normal_.liftedRows()) return;
    std::size_t modulus = normal_.variables();
    for (std::size_t i = 0; i < kept.size(); ++i) {
      const Equation& row = normal_.equations[i];
      mpq_class value = row.value;
      for (std::size_t j = 0; j < normal_.originals(); ++j) {
        require(row.row[j] == kept[i][2 + j], "equations stay as and where they are");
        value += row.row[j] * normal_.shift[j];
      }
      require(value == kept[i][0], "equations keep their value but for the shift");
      require((row.modulus != 0) == (kept[i][1] != 0), "congruences stay what they are");
      if (row.modulus != 0)
        require(row.row[modulus++] == kept[i][1], "a modulus is multiplied like its row");
    }
  }

  void checkLiftedRows() {
    const std::size_t originals = normal_.originals();
    const std::size_t first = normal_.equations.size() - normal_.liftedRows();
    for (std::size_t i = 0; i < normal_.equations.size(); ++i) {
      const Equation& row = normal_.equations[i];
      if (i >= first) require(row.modulus == 0, "lifted rows are plain");
      for (std::size_t j = originals; j < normal_.variables(); ++j)
        require(row.row[j] == extraCoefficient(i, first, j - originals),
                "slacks have -1, deviations 1 and -1 in their row alone, which comes last");
    }
  }

  /// The coefficient of slack or deviation number `extra` in equation i.
  int extraCoefficient(std::size_t i, std::size_t first, std::size_t extra) const {
    if (extra < normal_.slacks) return i == first + extra ? -1 : 0;
    const std::size_t pair = (extra - normal_.slacks) / 2;
    if (i != first + normal_.slacks + pair) return 0;
    return (extra - normal_.slacks) % 2 == 0 ? 1 : -1;
  }

  void checkInequations() {
    for (const Inequation& row : normal_.inequations) {
      require(allIntegers(row.row), "inequations are integer");
      require(row.lower.infinite == 0 && row.upper.infinite == 0 && isInteger(row.lower.value) &&
                  isInteger(row.upper.value),
              "inequations have two integer bounds");
      require(row.lower.value < row.upper.value, "inequations are no equalities");
      for (std::size_t j = normal_.originals(); j < row.row.size(); ++j)
        require(row.row[j] == 0, "slacks, deviations and moduli are in no inequation");
      checkTightness(row);
    }
    if (!normal_.inequations.empty())
      require(normal_.inequationColumns == static_cast<Index>(rowLength()),
              "the inequations know their columns");
  }

  /// No bound lies beyond what the row can reach.
  void checkTightness(const Inequation& row) {
    Bound least;
    Bound greatest;
    for (std::size_t j = 0; j < normal_.variables(); ++j) {
      if (row.row[j] == 0) continue;
      addEnd(row.row[j], row.row[j] > 0 ? normal_.lower[j] : normal_.upper[j], least);
      addEnd(row.row[j], row.row[j] > 0 ? normal_.upper[j] : normal_.lower[j], greatest);
    }
    require(least.infinite != 0 || least.value <= row.lower.value, "lower bounds are tight");
    require(greatest.infinite != 0 || row.upper.value <= greatest.value, "upper bounds are tight");
  }

  static void addEnd(const mpq_class& coefficient, const Bound& bound, Bound& end) {
    if (bound.infinite != 0) end.infinite = 1;
    end.value += coefficient * bound.value;
  }

  const Problem& problem_;
  const PlainRecord& normal_;
  std::ostringstream faults_;
};

}  // namespace

std::string formFaults(const Problem& problem, const PlainRecord& normal) {
  return Inspector(problem, normal).faults();
}

}  // namespace starsift::oracle

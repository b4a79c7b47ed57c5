// A walk over integer points, one coordinate at a time, towards one that satisfies all rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "search/jump/JumpProblem.h"

namespace starsift {

/// Each row has a weight; a step gives one coordinate the value for which the weighted sum of
/// violations falls most. Where no step lowers it the weights of the violated rows grow.
///
/// B. Luteberget, G. Sartor, Feasibility Jump: an LP-free Lagrangian MIP heuristic, Math. Program.
/// Comput. 15 (2023); the weights: P. Morris, The breakout method for escaping from local minima,
/// AAAI 1993.
class JumpWalk {
 public:
  /// Begins at the point of the box nearest to 0. The box isn't empty.
  JumpWalk(JumpProblem problem, std::uint64_t seed);

  const JumpProblem& problem() const { return problem_; }
  const std::vector<double>& point() const { return y_; }
  /// All rows are satisfied.
  bool hasArrived() const { return violated_.empty(); }
  /// Steps, and entries of rows and columns that were looked at: the measure of effort.
  std::uint64_t effort() const { return effort_; }

  void setSeed(std::uint64_t seed) { random_.seed(seed); }
  /// From now on the upper end of the objective's row is `most`.
  void setMostObjective(double most);
  /// One step, or a change of weights; not after hasArrived().
  void step();
  /// Moves to a point of the box and makes all weights equal.
  void restart(std::vector<double> point);
  /// Gives about `count` random coordinates of a point random values near theirs.
  std::vector<double> kicked(std::vector<double> point, std::size_t count);

 private:
  /// Indices below a bound, with constant time for all operations.
  class IndexSet {
   public:
    explicit IndexSet(std::size_t bound) : places_(bound, none) {}
    bool empty() const { return members_.empty(); }
    const std::vector<std::uint32_t>& members() const { return members_; }
    void put(std::size_t index, bool isMember);

   private:
    static constexpr std::uint32_t none = ~std::uint32_t{0};
    std::vector<std::uint32_t> members_;
    std::vector<std::uint32_t> places_;
  };

  struct Breakpoint {
    double value;
    /// By which the slope of the weighted violation grows there.
    double growth;
  };

  bool isBinary(std::size_t j) const;
  double violation(std::size_t i, double change) const {
    return problem_.rowRanges[i].distance(activity_[i] + change);
  }
  void computeActivities();
  /// Value and gain of the best step of a coordinate.
  void computeJump(std::size_t j);
  double bestValue(std::size_t j);
  double leastViolated(std::size_t j);
  void addBreakpoints(std::size_t j, const SparseEntry& entry);
  /// By which the weighted violation falls if a coordinate gets this value.
  double gainAt(std::size_t j, double value);
  void setGain(std::size_t j, double gain);
  std::optional<std::size_t> bestJump();
  void jump(std::size_t j);
  /// Adds what a row contributes to the gains of its coordinates but one; sign -1 takes it out,
  /// before the value or the weight of the row changes.
  void addGains(std::size_t i, double sign, std::size_t except);
  void raiseWeights();
  void renewJumps();

  JumpProblem problem_;
  std::mt19937_64 random_;
  std::vector<double> y_;
  std::vector<double> activity_;
  /// 1 over the greatest coefficient of each row.
  std::vector<double> unit_;
  std::vector<double> weight_;
  std::vector<double> target_;
  std::vector<double> gain_;
  /// Steps before which a coordinate isn't moved again.
  std::vector<std::uint64_t> restsUntil_;
  IndexSet violated_;
  /// Coordinates whose step lowers the weighted violation.
  IndexSet gaining_;
  std::vector<Breakpoint> breakpoints_;
  std::uint64_t steps_ = 0;
  std::uint64_t effort_ = 0;
};

}  // namespace starsift

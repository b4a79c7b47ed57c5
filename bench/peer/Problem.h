// The problem of the peer and its check of a solution: sparse rows of rationals, word by word
// what the problem says.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "peer/Text.h"

namespace peer {

struct Star {
  std::vector<mpq_class> x;
  std::vector<mpq_class> targetValues;
  mpq_class targetNorm;
  mpq_class slackNorm;
  /// Seconds; -1 when not known.
  long time = -1;
  std::string parameters;
  std::string version;
  /// The numbers of the version, without trailing zeros.
  std::vector<std::uint64_t> versionNumbers;
  /// The text of x, for order and file.
  std::string text;
};

class Problem {
 public:
  /// From the text of a .opt file.
  explicit Problem(std::string_view text);

  /// True when star.x is a solution; target values and norms are set then.
  bool check(Star& star) const;

  const std::vector<Bound>& goals() const { return goals_; }

 private:
  /// Columns and values of the entries that are not 0.
  using Row = std::vector<std::pair<std::size_t, mpq_class>>;

  static std::vector<Row> sparse(const std::vector<std::vector<mpq_class>>& rows);
  static mpq_class product(const Row& row, const std::vector<mpq_class>& x);
  bool equationsHold(const std::vector<mpq_class>& x) const;
  bool inequationsHold(const std::vector<mpq_class>& x) const;
  void computeTargets(Star& star) const;

  std::vector<Bound> goals_;
  std::vector<Row> targets_;
  std::vector<Row> equations_;
  std::vector<mpq_class> rightSides_;
  std::vector<mpq_class> moduli_;
  std::vector<Row> inequations_;
  std::vector<Bound> rowLower_;
  std::vector<Bound> rowUpper_;
  std::vector<Bound> lower_;
  std::vector<Bound> upper_;
};

}  // namespace peer

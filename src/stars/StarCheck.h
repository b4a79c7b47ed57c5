// The check of a star against its problem: whether it is a solution, and its target
// values and norms. No verdict and no value depends on rounding.
#pragma once

#include <memory>
#include <vector>

#include "problem/Vanu.h"
#include "stars/ExactPoint.h"
#include "stars/RowTests.h"
#include "stars/SmallBox.h"
#include "stars/Star.h"
#include "stars/StarNorms.h"

namespace starsift {

/// A problem prepared for the check of many stars. Preparation takes O(entries); a check
/// takes time proportional to the components of the star and the non-zero entries of the problem.
/// Copies share what was prepared, so that each thread may have its own.
template <class T>
class StarChecker {
 public:
  /// `problem` must outlive the checker and not change; its matrices may go if only finite stars
  /// of variableCount() components are checked, and the problem is well formed.
  explicit StarChecker(const Vanu<T>& problem);

  /// True if star.x() is a solution: within the bounds exactly, equations and
  /// congruences within the tolerance, ranged rows exactly. Then target values and
  /// norms are set, if there are targets; otherwise the star is unchanged.
  /// A star of another length is fatal, "Vector: dimension mismatch10", and so are
  /// rows of another length, "Matrix: mat-vec multiplication dimension mismatch". Throws
  /// PrecisionException "Precision lost during check" if T can't hold a result.
  bool check(Star<T>& star);

  /// The same without changing the star.
  StarVerdict<T> judge(const Star<T>& star);

  /// Storage for the point that judgePoint() judges: one component per variable, finite.
  ExactPoint& point() { return point_; }
  /// judge() of point(); the verdict is valid until the next one.
  const StarVerdict<T>& judgePoint();

  /// Number of variables.
  Index variableCount() const { return problem_.lx.dimension(); }
  /// Stars of variableCount() components fit the rows and bounds of the problem.
  bool isWellFormed() const { return rows_->areWellFormed; }

  /// True if there are values and norms to compute.
  bool hasTargets() const { return !rows_->targets.empty(); }

 private:
  /// What is prepared once.
  struct Rows {
    explicit Rows(const Vanu<T>& problem);
    void prepareEquations(const Vanu<T>& problem);

    bool areWellFormed;
    SmallBox box;
    Vector<QQ> goals;
    std::vector<IntervalTest> intervals;
    std::vector<CongruenceTest> congruences;
    std::vector<ScaledRow> targets;
  };

  bool withinBounds(const Vector<T>& x) const;
  /// Fatal unless all rows have `n` entries.
  void checkColumns(Index n) const;
  bool pointIsWithinBounds() const;
  /// The verdict on point_, which is within the bounds.
  void judgeRows(StarVerdict<T>& verdict);
  bool rowsAdmit() const;
  void computeTargets();
  void convertTargets(StarVerdict<T>& verdict) const;

  const Vanu<T>& problem_;
  std::shared_ptr<const Rows> rows_;
  /// The current star, and its results.
  ExactPoint point_;
  Vector<QQ> values_;
  Norms<QQ> norms_;
  StarVerdict<T> verdict_;
};

/// Checks the stars from index `first` on and drops those that fail; the order stays. True if
/// none was dropped. The stars are unchanged after an exception.
template <class T>
bool checkStars(StarChecker<T>& checker, Array<Star<T>>& stars, Index first = 1);

/// The same with a checker of its own.
template <class T>
bool checkStars(const Vanu<T>& problem, Array<Star<T>>& stars);

extern template class StarChecker<long double>;
extern template bool checkStars(StarChecker<long double>&, Array<Star<long double>>&, Index);
extern template bool checkStars(const Vanu<long double>&, Array<Star<long double>>&);

}  // namespace starsift

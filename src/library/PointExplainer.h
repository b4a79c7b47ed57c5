// What a point breaks, in terms of the library: the check of models knows other problems.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "models/check/ViolationKind.h"
#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

struct BrokenPart {
  ViolationKind kind;
  /// From 0 on, of the variable, or of the row: equations come first, then inequations.
  std::size_t index;
  /// Greater than 0: the distance to the nearest value that is allowed.
  QQ amount;
};

/// PointCheck of a problem as read.
class PointExplainer {
 public:
  explicit PointExplainer(const Vanu<QQ>& problem);
  PointExplainer(const PointExplainer&) = delete;
  PointExplainer& operator=(const PointExplainer&) = delete;
  ~PointExplainer();

  /// Empty if nothing is broken; the largest amount first. `x` has a finite component per variable.
  std::vector<BrokenPart> explain(const std::vector<QQ>& x) const;

 private:
  struct Checked;
  std::unique_ptr<const Checked> checked_;
};

}  // namespace starsift

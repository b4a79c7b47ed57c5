// Which fatal reports prove that a problem has no solution.
//
// A lattice satisfies equations exactly, a stored solution within a tolerance. So a report that
// depends on equations proves that there is no solution only if that makes no difference.
#pragma once

#include <string>
#include <string_view>

namespace starsift {

/// Sets whether all points that satisfy the equations of the problem within the tolerance
/// satisfy them exactly (see Exactness.h); initially false. For the calling thread.
void setEquationsExact(bool exact);

/// What a fatal message proves.
enum class FatalProof {
  nothing,
  /// There is no solution.
  noSolution,
  /// No solution satisfies the equations exactly.
  noExactSolution
};

FatalProof fatalProof(std::string_view message);

/// The remark, for setFailureRemark(), that says what a fatal message proves; empty if it proves
/// nothing.
std::string proofRemark(std::string_view message);

}  // namespace starsift

// Which fatal reports prove that a problem has no solution.
//
// A lattice satisfies equations exactly, a stored solution within a tolerance. So a report that
// depends on equations proves that there is no solution only if that makes no difference.
#pragma once

#include <string>
#include <string_view>

#include "search/decide/ProofScope.h"

namespace starsift {

/// What is said of proofs where variables have steps.
inline constexpr std::string_view stepsRemark =
    "Variables with decimals: only multiples of their steps were considered.";

/// Sets the scope of fatal messages that prove something; initially the default one. For the
/// calling thread.
void setProofScope(const ProofScope& scope);

/// What a fatal message proves.
enum class FatalProof {
  nothing,
  /// There is no solution.
  noSolution,
  /// No solution satisfies the equations exactly.
  noExactSolution
};

FatalProof fatalProof(std::string_view message);

/// The scope of what it proves.
ProofScope fatalScope(std::string_view message);

/// The remark, for setFailureRemark(), that says what a fatal message proves; empty if it proves
/// nothing.
std::string proofRemark(std::string_view message);

}  // namespace starsift

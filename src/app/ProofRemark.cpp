#include "app/ProofRemark.h"

#include "text/Text.h"

namespace starsift {

namespace {

/// A thread searches in one problem at a time.
thread_local ProofScope currentScope;

/// A report on bounds of variables as read, or on an inequation as read that only infinity
/// satisfies: neither depends on equations. Narrowed bounds are never empty.
bool isProofWithoutEquations(std::string_view message) {
  return message == "sol bounds error" ||
         message == "Unfulfillable infinite inequation detected --> NO SOLUTIONS!";
}

/// Includes reports on inequations, as equations may have narrowed the bounds concerned.
bool isProofByEquations(std::string_view message) {
  return endsWith(message, "--> NO SOLUTIONS!") ||
         message == "The equation system has no integer solution :(";
}

}  // namespace

void setProofScope(const ProofScope& scope) {
  currentScope = scope;
}

ProofScope fatalScope(std::string_view message) {
  if (isProofWithoutEquations(message)) return {.equationsAreExact = true};
  return currentScope;
}

FatalProof fatalProof(std::string_view message) {
  if (!isProofWithoutEquations(message) && !isProofByEquations(message)) return FatalProof::nothing;
  return fatalScope(message).equationsAreExact ? FatalProof::noSolution
                                               : FatalProof::noExactSolution;
}

std::string proofRemark(std::string_view message) {
  const FatalProof proof = fatalProof(message);
  if (proof == FatalProof::nothing) return "";
  std::string remark = proof == FatalProof::noSolution
                           ? "This proves that the problem has no solution."
                           : "This proves that no solution holds exactly.";
  if (fatalScope(message).hasSteps) remark += '\n' + std::string(stepsRemark);
  return remark;
}

}  // namespace starsift

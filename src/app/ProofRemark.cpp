#include "app/ProofRemark.h"

#include "text/Text.h"

namespace starsift {

namespace {

/// A thread searches in one problem at a time.
thread_local bool equationsAreExact = false;

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

void setEquationsExact(bool exact) {
  equationsAreExact = exact;
}

FatalProof fatalProof(std::string_view message) {
  if (isProofWithoutEquations(message)) return FatalProof::noSolution;
  if (!isProofByEquations(message)) return FatalProof::nothing;
  return equationsAreExact ? FatalProof::noSolution : FatalProof::noExactSolution;
}

std::string proofRemark(std::string_view message) {
  switch (fatalProof(message)) {
    case FatalProof::noSolution:
      return "This proves that the problem has no solution.";
    case FatalProof::noExactSolution:
      return "This proves that no solution holds exactly.";
    case FatalProof::nothing:
      break;
  }
  return "";
}

}  // namespace starsift

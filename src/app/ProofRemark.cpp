#include "app/ProofRemark.h"

#include "text/Text.h"

namespace starsift {

namespace {

bool equationsAreExact = false;

/// Of bounds of variables as read, and of an inequation as read that only infinity meets:
/// no equation has a say in them. Narrowed bounds are never empty.
bool isProofWithoutEquations(std::string_view message) {
  return message == "sol bounds error" ||
         message == "Unfulfillable infinite inequation detected --> NO SOLUTIONS!";
}

/// Also of inequations, as equations may have narrowed the bounds that it is about.
bool isProofByEquations(std::string_view message) {
  return endsWith(message, "--> NO SOLUTIONS!") ||
         message == "The equation system has no integer solution :(";
}

}  // namespace

void setEquationsExact(bool exact) {
  equationsAreExact = exact;
}

std::string proofRemark(std::string_view message) {
  if (isProofWithoutEquations(message) || (isProofByEquations(message) && equationsAreExact))
    return "This proves that the problem has no solution.";
  return isProofByEquations(message) ? "This proves that no solution holds exactly." : "";
}

}  // namespace starsift

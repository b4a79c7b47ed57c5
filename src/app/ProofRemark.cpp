#include "app/ProofRemark.h"

#include "text/Text.h"

namespace starsift {

std::string proofRemark(std::string_view message) {
  const bool proves = endsWith(message, "--> NO SOLUTIONS!") || message == "sol bounds error" ||
                      message == "The equation system has no integer solution :(";
  return proves ? "This proves that the problem has no solution." : "";
}

}  // namespace starsift

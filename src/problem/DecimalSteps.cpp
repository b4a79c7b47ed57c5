#include "problem/DecimalSteps.h"

#include <algorithm>

#include "numbers/ExactArithmetic.h"

namespace starsift {

namespace {

constexpr int maxDecimals = 1000;

bool isSmallCount(const QQ& decimals) {
  return isNonNegativeInteger(decimals) && decimals <= QQ(maxDecimals);
}

}  // namespace

std::optional<std::vector<QQ>> stepsPerUnit(const Vector<QQ>& dx) {
  if (!std::all_of(dx.begin(), dx.end(), &isSmallCount)) return std::nullopt;
  std::vector<QQ> steps;
  for (const QQ& decimals : dx) steps.push_back(ExactArithmetic<QQ>::powerOfTen(decimals));
  return steps;
}

}  // namespace starsift

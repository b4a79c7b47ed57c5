#include "library/GivenPoint.h"

#include <algorithm>

#include "models/text/Words.h"
#include "system/Failure.h"

namespace starsift {

void requireLength(std::size_t components, std::size_t variables) {
  if (components != variables)
    fail("a point has " + counted(components, "component") + ", the problem " +
         counted(variables, "variable"));
}

void requirePoint(std::span<const Number> point, std::size_t variables) {
  requireLength(point.size(), variables);
  if (std::any_of(point.begin(), point.end(),
                  [](const Number& component) { return component.isInfinite(); }))
    fail("a point has an infinite component");
}

}  // namespace starsift

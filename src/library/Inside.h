// What the objects of the public header hold, in the numbers and records of the house.
#pragma once

#include <starsift/starsift.h>

#include <span>
#include <vector>

#include "files/SolutionFile.h"
#include "library/ProblemRecord.h"
#include "numbers/QQ.h"
#include "stars/Star.h"

namespace starsift {
inline namespace v1 {

struct Problem::Record : ProblemRecord {};

class Inside {
 public:
  static QQ exact(const Number& number);
  static Number number(const QQ& value);
  static std::vector<Number> numbers(const Vector<QQ>& values);

  static const ProblemRecord& record(const Problem& problem) { return *problem.record_; }

  static Solution solution(const Star<QQ>& star);
  static Star<QQ> star(const Solution& solution);
  /// The stars of `solutions`, unchecked, with the problem. Fatal as requirePoint().
  static SolutionFile<QQ> file(const ProblemRecord& problem, std::span<const Solution> solutions);
};

}  // namespace v1
}  // namespace starsift

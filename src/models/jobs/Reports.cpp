#include "models/jobs/Reports.h"

#include <algorithm>

namespace starsift {

bool SolutionReport::isRight() const {
  return std::all_of(records.begin(), records.end(),
                     [](const RecordReport& record) { return record.check.isRight(); });
}

bool JobReport::isRight() const {
  return std::all_of(solutions.begin(), solutions.end(),
                     [](const SolutionReport& solution) { return solution.isRight(); });
}

}  // namespace starsift

// The reports of starport for programs.
#pragma once

#include <string>

#include "models/jobs/Reports.h"

namespace starsift {

/// One JSON object with a line feed behind it. Exact numbers are strings: decimals, or fractions.
/// With `showsRows` each record has the activities of all rows.
std::string reportJson(const JobReport& report, bool showsRows);

}  // namespace starsift

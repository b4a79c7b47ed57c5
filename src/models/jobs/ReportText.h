// The reports of starport for people.
#pragma once

#include <iosfwd>

#include "models/jobs/Reports.h"

namespace starsift {

/// The remarks on the model, the files written, and a line per record: what was changed, what is
/// broken.
void writeReport(std::ostream& stream, const JobReport& report);

/// Every record with each row, bound and step that it breaks, the exact amounts, and the values of
/// the targets; the activities of all rows if `showsRows`.
void writeExplanation(std::ostream& stream, const JobReport& report, bool showsRows);

}  // namespace starsift

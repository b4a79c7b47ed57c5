// The names that CBC gives to all columns if it dislikes one name of an .lp file.
#pragma once

#include <optional>

#include "models/record/NameTable.h"
#include "models/solutions/SolverFile.h"

namespace starsift {

/// The point with the numbers of the columns in place of the names x0, x1, ... that CBC gave them
/// in their order; nothing if its names are those of `names`, the columns that were solved.
/// ModelError if they are neither: CBC takes each of `names`, or `isLp` is false, so that another
/// file was solved, whose order isn't known.
std::optional<WrittenPoint> pointByNumber(const NameTable& names, bool isLp,
                                          const WrittenPoint& point);

}  // namespace starsift

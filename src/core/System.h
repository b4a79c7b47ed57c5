// Memory figures of the process and the machine, from the files of /proc.
#pragma once

#include <string>

#include "core/Index.h"

namespace starsift {

/// Resident memory of this process in gibibytes, rounded to the nearest whole one.
/// `statm` holds page counts, the resident ones second; 0 when it can't be read.
Index residentGibibytes(const std::string& statm = "/proc/self/statm");

/// Memory available to new processes in kibibytes: the figure of the line
/// "MemAvailable:" of `meminfo`; 0 when there is none.
Index availableKibibytes(const std::string& meminfo = "/proc/meminfo");

}  // namespace starsift

// Tools that are promised to programs around the library: small tools for text, and the memory
// figures of the process and the machine from the files of /proc. Of these only what decides
// whether a file or a lattice fits into memory is called in the library.
#pragma once

#include <string>
#include <string_view>

#include "core/Array.h"

namespace starsift {

class Serializable;

/// The pieces between the separators, as std::getline returns them: an empty text has
/// none, and a separator at the very end adds no empty piece.
Array<std::string> split(std::string_view text, char separator);

/// Maps each character by the function of the C library.
std::string toLower(std::string_view text);
std::string toUpper(std::string_view text);

/// Replaces all matches of an ECMAScript regular expression. `replacement` may
/// refer to groups ("$1"). A malformed pattern throws std::regex_error.
std::string regexReplace(const std::string& text, const std::string& pattern,
                         const std::string& replacement);

/// The text form with 17 significant digits. A text longer than `limit` keeps its
/// first and last limit / 2 characters with " ... " between them; limit 0: whole.
std::string limitedText(const Serializable& object, Index limit);

/// Resident memory of this process in gibibytes, rounded to the nearest whole one.
/// `statm` holds page counts, the resident ones second; 0 when it can't be read.
Index residentGibibytes(const std::string& statm = "/proc/self/statm");

/// Memory available to new processes in kibibytes: the figure of the line
/// "MemAvailable:" of `meminfo`; 0 if there is none.
Index availableKibibytes(const std::string& meminfo = "/proc/meminfo");
/// The same for the swap space that is free: the line "SwapFree:".
Index freeSwapKibibytes(const std::string& meminfo = "/proc/meminfo");

/// Bytes of the address space of this process, the first figure of `statm` in pages; 0 when it
/// can't be read.
Index addressSpace(const std::string& statm = "/proc/self/statm");

/// Bytes that this process may still have: of the machine with its swap space, and of its limit of
/// the address space; infinity if that isn't known.
double availableBytes();
/// The greatest resident memory that this process has had, in bytes; 0 if that isn't known.
double peakResidentBytes();

}  // namespace starsift

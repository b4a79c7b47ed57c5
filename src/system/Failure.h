// The fatal channel: bad input and broken invariants that nobody repairs.
#pragma once

#include <string_view>

namespace starsift {

/// Reports "*** FAIL: " and `message` on a line of its own on the error stream,
/// with the program's remark on it (see FailureRemark.h) on the next one, remembers the
/// time (see Console.h) and ends the process with status 1.
[[noreturn]] void fail(std::string_view message);

/// As fail(), for a failed system call: a line "ERRNO = " with the text of the
/// current errno goes first.
[[noreturn]] void failErrno(std::string_view message);

}  // namespace starsift

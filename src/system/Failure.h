// The fatal channel: bad input and broken invariants that nobody repairs. It ends the
// process, unless a host decides otherwise.
#pragma once

#include <string>
#include <string_view>

namespace starsift {

/// Reports "*** FAIL: " and `message` on a line of its own on the error stream, the
/// remark of the program on the next line, stores the time (see Console.h) and ends the
/// process with status 1, without unwinding. Calls the handler of the host first. During a
/// HostedCall of the calling thread throws a FatalReport instead, and does nothing else.
[[noreturn]] void fail(std::string_view message);

/// As fail(), for a failed system call: a line "ERRNO = " with the text of the
/// current errno goes first.
[[noreturn]] void failErrno(std::string_view message);

/// Reports and ends the process as fail() does, whatever handler there is and whoever the calling
/// thread works for: it can't go on, and nothing may be thrown.
[[noreturn]] void endProcess(std::string_view message);

/// What a host (a test, a fuzzer, another language) does instead of ending the process.
/// It is called before anything is written. It may throw or end the process; if it
/// returns, the report and the end follow as without it. It must not call fail(). An
/// exception must not pass a noexcept function: releasing a semaphore in its destructor
/// fails without the handler being able to save the process.
using FailureHandler = void (*)(std::string_view message);

/// Makes fail() and failErrno() call `handler` from now on; null: call none, as at the
/// start of the process. Returns the former one. Not while other threads run.
FailureHandler setFailureHandler(FailureHandler handler);

/// The line that belongs under the report of `message`, without line feed; empty for
/// none. Some reports are bad news about the input, others are an answer, and only the
/// program knows what it was asked.
using FailureRemark = std::string (*)(std::string_view message);

/// Makes fail() ask `remark` from now on; null: no remarks.
void setFailureRemark(FailureRemark remark);

/// The remark on `message`; empty if the program has set none.
std::string failureRemark(std::string_view message);

}  // namespace starsift

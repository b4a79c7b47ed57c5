// What every command of the suite does the same way.
#pragma once

#include <string_view>

namespace starsift {

/// An exception that nobody caught is named on the error stream, with the program's remark on
/// it (see system/Failure.h), before the process aborts, and no named semaphore stays behind.
void nameUncaughtExceptions();

/// The line "Usage: ", the program's name without its folders, and the arguments that it
/// takes.
void printUsage(std::string_view path, std::string_view arguments);

/// Hands on all that was printed on standard output. Returns `status`, or EXIT_FAILURE where
/// some of it could not be written, which a line on the error stream says.
int statusOfOutput(int status);

/// Runs `run()` so that an exception nobody catches unwinds the stack first. Without a
/// handler above it it would end the process on the spot, and an unfinished new file
/// would stay beside the old one.
template <class Run>
auto unwinding(Run run) {
  try {
    return run();
  } catch (...) {
    throw;
  }
}

}  // namespace starsift

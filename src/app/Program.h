// Functions that both commands share.
#pragma once

#include <string_view>

namespace starsift {

/// From now on an uncaught exception is named on the error stream, with the program's remark on
/// it (see system/Failure.h), and all named semaphores are removed, before the process aborts.
void nameUncaughtExceptions();

/// Prints the line "Usage: ", the program's name without its folders, and its arguments.
void printUsage(std::string_view path, std::string_view arguments);

/// Prints the program's name without its folders and its version.
void printVersion(std::string_view path);

/// Flushes standard output. Returns `status`, or EXIT_FAILURE with a line on the error stream if
/// some of the output could not be written.
int statusOfOutput(int status);

/// Runs `run()` so that an uncaught exception unwinds the stack first. Without a handler it
/// would end the process at once, and an unfinished new file would stay beside the old one.
template <class Run>
auto unwinding(Run run) {
  try {
    return run();
  } catch (...) {
    throw;
  }
}

}  // namespace starsift

// Functions that both commands share.
#pragma once

#include <new>
#include <string_view>

#include "app/OutOfMemory.h"

namespace starsift {

/// The first step of a command: opens what is closed of the standard streams, so that no file
/// gets their numbers and a report into it, then calls failWithoutMemory() and
/// nameUncaughtExceptions().
void prepareProgram();

/// From now on an uncaught exception is named on the error stream, with the program's remark on
/// it (see system/Failure.h), and all named semaphores are removed, before the process aborts.
void nameUncaughtExceptions();

/// Prints the line "Usage: ", the program's name without its folders, and its arguments.
void printUsage(std::string_view path, std::string_view arguments);

/// Prints the program's name without its folders and its version.
void printVersion(std::string_view path);

/// Flushes standard output. Returns `status`, or EXIT_FAILURE with a line on the error stream if
/// some of it or of earlier output could not be written.
int statusOfOutput(int status);

/// Runs `run()` so that an uncaught exception unwinds the stack first. Without a handler it
/// would end the process at once, and an unfinished new file would stay beside the old one. An
/// array too large for any memory is fatal like one for which there is none.
template <class Run>
auto unwinding(Run run) {
  try {
    return run();
  } catch (const std::bad_alloc&) {
    failOutOfMemory();
  } catch (...) {
    throw;
  }
}

}  // namespace starsift

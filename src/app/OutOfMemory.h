// The end of a command that gets no more memory.
#pragma once

namespace starsift {

/// How a process ends that gets no more memory: reports that and doesn't return.
using OutOfMemoryEnd = void (*)();

/// The fatal report "Out of memory".
void reportOutOfMemory();

/// From now on an allocation that fails, by operator new or by GMP, ends the process by `end`.
/// Some memory is set aside for it. Without unwinding, as GMP can't be left by an exception;
/// semaphores and an unfinished new file are removed first.
void failWithoutMemory(OutOfMemoryEnd end = reportOutOfMemory);

/// This end itself.
[[noreturn]] void failOutOfMemory();

}  // namespace starsift

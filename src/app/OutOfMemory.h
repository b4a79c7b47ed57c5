// The end of a command that gets no more memory.
#pragma once

namespace starsift {

/// From now on an allocation that fails, by operator new or by GMP, ends the process by the fatal
/// report "Out of memory". Some memory is set aside for the report. Without unwinding, as GMP
/// can't be left by an exception; semaphores and an unfinished new file are removed first.
void failWithoutMemory();

/// The fatal report itself.
[[noreturn]] void failOutOfMemory();

}  // namespace starsift

// SIGHUP, SIGINT and SIGTERM as requests to end.
#pragma once

namespace starsift {

/// From now on the first SIGHUP, SIGINT or SIGTERM is only stored, and the next one ends the
/// process at once, unless it comes within half a second: timeout(1) sends its signal twice. A
/// signal that is ignored stays ignored.
void rememberInterrupts();

/// The number of the signal that came first, 0 while there was none.
int interrupted();

/// Ends the process by the signal that came, as if it had never been caught, so that the parent
/// process sees it. Returns if there was none.
void endByInterrupt();

}  // namespace starsift

// SIGINT and SIGTERM as a wish to come to an end.
#pragma once

namespace starsift {

/// From now on the first of SIGINT and SIGTERM is only remembered, and the next one ends
/// the process at once, unless it comes within half a second: timeout(1) sends its signal
/// twice. A signal that is ignored stays so.
void rememberInterrupts();

/// The number of the signal that came first, 0 while there was none.
int interrupted();

/// Ends the process by the signal that came, as if it had never been caught, so that
/// whoever started the process sees it. Returns when there was none.
void endByInterrupt();

}  // namespace starsift

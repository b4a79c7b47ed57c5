// System calls that a signal may interrupt.
#pragma once

#include <cerrno>

namespace starsift {

/// The result of `call`, repeated while it is below 0 because of a signal. Not for
/// close(): the descriptor is gone then, and its number may be somebody else's.
template <class Call>
auto uninterrupted(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace starsift

// System calls that a signal may interrupt.
#pragma once

#include <cerrno>

namespace starsift {

/// Repeats `call` while it returns a value below 0 because of a signal; returns its
/// result. Not for close(): the descriptor is closed even then, and its number may
/// already belong to another file.
template <class Call>
auto uninterrupted(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace starsift

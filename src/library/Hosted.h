// The border between a host and the floors below: what happens there leaves as an Error.
#pragma once

#include <starsift/starsift.h>

#include <exception>
#include <new>

#include "system/HostedCall.h"

namespace starsift {

/// Runs `run()` for a host and returns its result. A fatal report and every exception but
/// std::bad_alloc leave as an Error with their text.
template <class Run>
auto hosted(const Run& run) {
  const HostedCall call;
  try {
    return run();
  } catch (const FatalReport& report) {
    throw Error(report.what());
  } catch (const Error&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& exception) {
    throw Error(exception.what());
  }
}

}  // namespace starsift

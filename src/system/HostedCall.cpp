#include "system/HostedCall.h"

#include <utility>

namespace starsift {

namespace {

/// Calls of this thread, one within the other.
thread_local int callsUnderWay = 0;

}  // namespace

HostedCall::HostedCall()
    : console_(std::exchange(consoleState(), {})), locale_(ThreadLocale::classic()) {
  ++callsUnderWay;
}

HostedCall::~HostedCall() {
  --callsUnderWay;
  consoleState() = console_;
}

bool HostedCall::isUnderWay() noexcept {
  return callsUnderWay > 0;
}

}  // namespace starsift

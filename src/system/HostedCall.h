// Calls that came in by the library: process, streams and other threads belong to a host.
#pragma once

#include <string>
#include <utility>

#include "system/Console.h"

namespace starsift {

/// What fail() throws during such a call. Not one of Exceptions.h: nothing below the library
/// handles it.
class FatalReport {
 public:
  explicit FatalReport(std::string message) : message_(std::move(message)) {}
  const std::string& message() const { return message_; }

 private:
  std::string message_;
};

/// During its lifetime the calling thread works for a host: fail() throws a FatalReport, reports
/// go nowhere, and the console has a state of its own. Other threads aren't concerned. May be
/// nested.
class HostedCall {
 public:
  HostedCall();
  HostedCall(const HostedCall&) = delete;
  HostedCall& operator=(const HostedCall&) = delete;
  ~HostedCall();

  /// The calling thread works for a host.
  static bool isUnderWay() noexcept;

 private:
  ConsoleState console_;
};

}  // namespace starsift

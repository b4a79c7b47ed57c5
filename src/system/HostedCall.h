// Calls that came in by the library: process, streams and other threads belong to a host.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "system/Console.h"
#include "system/ThreadLocale.h"

namespace starsift {

/// What fail() throws during such a call. Not one of Exceptions.h: nothing below the library
/// handles it.
class FatalReport : public std::exception {
 public:
  explicit FatalReport(std::string message) : message_(std::move(message)) {}
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  std::string message_;
};

/// During its lifetime the calling thread works for a host: fail() throws a FatalReport, reports
/// go nowhere, the console has a state of its own, and the functions of C work as in the locale
/// "C". Other threads aren't concerned. May be nested.
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
  ThreadLocale locale_;
};

}  // namespace starsift

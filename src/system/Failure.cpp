#include "system/Failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <utility>

#include "system/Console.h"
#include "system/HostedCall.h"

namespace starsift {

namespace {

/// Null: no handler.
FailureHandler currentHandler = nullptr;
/// Null: no remarks.
FailureRemark currentRemark = nullptr;

void callHandler(std::string_view message) {
  if (currentHandler != nullptr) currentHandler(message);
}

}  // namespace

void fail(std::string_view message) {
  if (HostedCall::isUnderWay()) throw FatalReport(std::string(message));
  callHandler(message);
  endProcess(message);
}

void failErrno(std::string_view message) {
  const int error = errno;  // the handler and writing may change errno
  if (HostedCall::isUnderWay())
    throw FatalReport(std::string(message) + ": " + std::strerror(error));
  callHandler(message);
  std::cerr << "ERRNO = " << std::strerror(error) << endLine();
  stampFailureTime();
  endProcess(message);
}

void endProcess(std::string_view message) {
  // The leading line feed separates the report from a progress line under way.
  std::cerr << "\n*** FAIL: " << message << endLine();
  if (const std::string remark = failureRemark(message); !remark.empty())
    std::cerr << remark << endLine();
  stampFailureTime();
  std::exit(1);
}

FailureHandler setFailureHandler(FailureHandler handler) {
  return std::exchange(currentHandler, handler);
}

void setFailureRemark(FailureRemark remark) {
  currentRemark = remark;
}

std::string failureRemark(std::string_view message) {
  return currentRemark == nullptr ? std::string() : currentRemark(message);
}

}  // namespace starsift

// Expectations on the fatal channel: the statement runs in a forked process, its
// whole error output is compared, not a part of it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace starsift::test {

/// What fail(message) writes to the error stream.
inline std::string failureText(const std::string& message) {
  return "\n*** FAIL: " + message + "\n";
}

/// What failErrno(message) writes when the system's text of the error is `reason`.
inline std::string failureText(const std::string& reason, const std::string& message) {
  return "ERRNO = " + reason + "\n" + failureText(message);
}

}  // namespace starsift::test

/// The statement ends the process with status 1 and reports exactly `message`.
#define EXPECT_FAILS_WITH(statement, message)          \
  EXPECT_EXIT(statement, ::testing::ExitedWithCode(1), \
              ::testing::StrEq(::starsift::test::failureText(message)))

/// As above for a failed system call; `reason` is the system's text of the error.
#define EXPECT_FAILS_WITH_REASON(statement, reason, message) \
  EXPECT_EXIT(statement, ::testing::ExitedWithCode(1),       \
              ::testing::StrEq(::starsift::test::failureText(reason, message)))

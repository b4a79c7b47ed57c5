// In this program fail() throws while the tests run: thousands of generated problems end in a
// fatal report each, and a process of its own for each would take too long. An unexpected report
// shows its counterexample instead of ending everything.
#include <gtest/gtest.h>

#include <string_view>

#include "system/Failure.h"
#include "system/HostedCall.h"

namespace starsift::test {

namespace {

void throwReport(std::string_view message) {
  throw FatalReport(std::string(message));
}

/// For all tests of the program.
class ThrowingFailures : public testing::Environment {
 public:
  void SetUp() override { setFailureHandler(throwReport); }
  void TearDown() override { setFailureHandler(nullptr); }
};

[[maybe_unused]] const testing::Environment* const throwingFailures =
    testing::AddGlobalTestEnvironment(new ThrowingFailures);

}  // namespace

}  // namespace starsift::test

// Tests of what goes to the console.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/Console.h"

namespace starsift::test {

/// Each test begins with a console that has seen nothing, and leaves such a one.
class FreshConsole : public testing::Test {
 protected:
  FreshConsole() { consoleState() = {}; }
  ~FreshConsole() override { consoleState() = {}; }

  /// What `step` writes to standard output.
  template <class Step>
  static std::string consoleOf(Step step) {
    testing::internal::CaptureStdout();
    step();
    return testing::internal::GetCapturedStdout();
  }
};

}  // namespace starsift::test

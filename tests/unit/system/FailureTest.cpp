#include "system/Failure.h"

#include <cerrno>
#include <cstdlib>
#include <iostream>

#include "support/fixtures/ExpectFails.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/FailureRemark.h"

namespace starsift {
namespace {

TEST(Failure, StartsOnAFreshLineAndEndsTheProcessWithStatusOne) {
  EXPECT_EXIT(
      {
        std::cerr << "half a line";
        fail("Array: index out of range");
      },
      testing::ExitedWithCode(1), "^half a line\n\\*\\*\\* FAIL: Array: index out of range\n$");
}

TEST(Failure, KeepsAnEmptyMessage) {
  EXPECT_FAILS_WITH(fail(""), "");
}

TEST(Failure, OfASystemCallNamesTheReasonFirst) {
  EXPECT_FAILS_WITH_REASON(
      {
        errno = ENOENT;
        failErrno("SEM could not be unlinked");
      },
      "No such file or directory", "SEM could not be unlinked");
}

/// Ends the process with status 0 when the failure marked the console as told.
void checkMarksAtExit() {
  const ConsoleState& state = consoleState();
  const bool marked = state.lastFailureTime > 0 && state.lineOpen[1] && !state.lineStarted[1];
  std::_Exit(marked ? 0 : 2);
}

TEST(Failure, RemembersItsTimeAndEndsTheLineOfTheCurrentLevel) {
  EXPECT_EXIT(
      {
        consoleState() = {};
        openStamp(false);
        std::atexit(checkMarksAtExit);
        fail("x");
      },
      testing::ExitedWithCode(0), "FAIL: x");
}

TEST(Failure, IsNoException) {
  EXPECT_FAILS_WITH(
      {
        try {
          fail("x");
        } catch (...) {
          std::exit(3);
        }
      },
      "x");
}

std::string remarkOnProof(std::string_view message) {
  return message == "proof" ? "That is an answer." : "";
}

TEST(Failure, HasTheRemarkOfTheProgramUnderTheReport) {
  EXPECT_EXIT(
      {
        setFailureRemark(remarkOnProof);
        fail("proof");
      },
      testing::ExitedWithCode(1), testing::StrEq("\n*** FAIL: proof\nThat is an answer.\n"));
}

TEST(Failure, HasNoEmptyLineWhereTheProgramHasNoRemark) {
  EXPECT_FAILS_WITH(
      {
        setFailureRemark(remarkOnProof);
        fail("bad input");
      },
      "bad input");
}

TEST(Failure, HasNoRemarkOnceNobodyMakesAny) {
  setFailureRemark(remarkOnProof);
  setFailureRemark(nullptr);
  EXPECT_FAILS_WITH(fail("proof"), "proof");
}

}  // namespace
}  // namespace starsift

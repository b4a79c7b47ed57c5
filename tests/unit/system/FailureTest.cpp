#include "system/Failure.h"

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <string>

#include "support/fixtures/ExpectFails.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/HostedCall.h"

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

TEST(Failure, EndsTheProcessForAHostToo) {
  EXPECT_EXIT(
      {
        const HostedCall call;
        endProcess("Out of memory");
      },
      testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: Out of memory\n$");
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

/// What a host may throw.
struct Refusal {
  std::string message;
};

void refuse(std::string_view message) {
  throw Refusal{std::string(message)};
}

/// Has a handler while it lives.
class FailureHandled {
 public:
  explicit FailureHandled(FailureHandler handler) { setFailureHandler(handler); }
  FailureHandled(const FailureHandled&) = delete;
  FailureHandled& operator=(const FailureHandled&) = delete;
  ~FailureHandled() { setFailureHandler(nullptr); }
};

/// The message that a host gets of `action`.
template <class Action>
std::string refusedBy(const Action& action) {
  try {
    action();
  } catch (const Refusal& refusal) {
    return refusal.message;
  }
  return "no refusal";
}

TEST(Failure, LeavesAsTheExceptionOfAHandlerWithoutAReport) {
  const FailureHandled handled(refuse);
  testing::internal::CaptureStderr();
  EXPECT_EQ(refusedBy([] { fail("Array: index out of range"); }), "Array: index out of range");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Failure, OfASystemCallLeavesAsTheExceptionOfAHandlerWithoutAReport) {
  const FailureHandled handled(refuse);
  testing::internal::CaptureStderr();
  EXPECT_EQ(refusedBy([] { failErrno("SEM could not be opened"); }), "SEM could not be opened");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

void noteAndReturn(std::string_view message) {
  std::cerr << "asked: " << message;
  errno = EACCES;
}

TEST(Failure, GoesOnWhereTheHandlerReturns) {
  EXPECT_EXIT(
      {
        setFailureHandler(noteAndReturn);
        setFailureRemark(remarkOnProof);
        fail("proof");
      },
      testing::ExitedWithCode(1),
      testing::StrEq("asked: proof\n*** FAIL: proof\nThat is an answer.\n"));
}

TEST(Failure, OfASystemCallAsksTheHandlerOnceAndKeepsItsReason) {
  EXPECT_EXIT(
      {
        setFailureHandler(noteAndReturn);
        errno = ENOENT;
        failErrno("x");
      },
      testing::ExitedWithCode(1),
      testing::StrEq("asked: xERRNO = No such file or directory\n\n*** FAIL: x\n"));
}

TEST(Failure, EndsTheProcessAgainOnceTheHandlerIsGone) {
  setFailureHandler(refuse);
  setFailureHandler(nullptr);
  EXPECT_FAILS_WITH(fail("x"), "x");
}

}  // namespace
}  // namespace starsift

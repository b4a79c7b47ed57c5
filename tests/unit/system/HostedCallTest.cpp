#include "system/HostedCall.h"

#include <gtest/gtest.h>
#include <langinfo.h>

#include <cerrno>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>

#include "support/fixtures/ExpectFails.h"
#include "system/Failure.h"

namespace starsift {
namespace {

/// The message of the report that ends `run`.
template <class Run>
std::string reportOf(const Run& run) {
  try {
    run();
  } catch (const FatalReport& report) {
    return report.what();
  }
  return "none";
}

TEST(HostedCall, MakesAFatalReportAnException) {
  const HostedCall call;
  EXPECT_EQ(reportOf([] { fail("Array: index out of range"); }), "Array: index out of range");
}

TEST(HostedCall, NamesTheReasonOfAFailedSystemCall) {
  const HostedCall call;
  EXPECT_EQ(reportOf([] {
              errno = ENOENT;
              failErrno("SEM could not be opened");
            }),
            "SEM could not be opened: No such file or directory");
}

TEST(HostedCall, LeavesTheProcessToItsHandlerAfterwards) {
  { const HostedCall call; }
  EXPECT_FAILS_WITH(fail("over"), "over");
}

TEST(HostedCall, ConcernsItsThreadOnly) {
  const HostedCall call;
  bool isHosted = true;
  std::thread([&isHosted] { isHosted = HostedCall::isUnderWay(); }).join();
  EXPECT_FALSE(isHosted);
}

TEST(HostedCall, HasTheLocaleOfC) {
  const std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)> utf8(
      newlocale(LC_ALL_MASK, "C.UTF-8", nullptr), &freelocale);
  ASSERT_NE(utf8, nullptr);
  const ThreadLocale host(utf8.get());
  const std::string ofHost = nl_langinfo(CODESET);
  {
    const HostedCall call;
    EXPECT_NE(ofHost, nl_langinfo(CODESET));
  }
  EXPECT_EQ(ofHost, nl_langinfo(CODESET));
}

TEST(HostedCall, MayBeNested) {
  const HostedCall call;
  { const HostedCall inner; }
  EXPECT_TRUE(HostedCall::isUnderWay());
}

TEST(HostedCall, SilencesReportsAndRemarks) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  {
    const HostedCall call;
    report(reportStream(), "progress");
    remarkStream() << "*** remark" << endLine();
  }
  report(reportStream(), "heard");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "|-> heard\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(HostedCall, RestoresTheConsoleOfItsThread) {
  setConsoleDepth(3);
  {
    const HostedCall call;
    EXPECT_EQ(consoleDepth(), 0);
    openStamp(false);
  }
  EXPECT_EQ(consoleDepth(), 3);
  setConsoleDepth(0);
}

}  // namespace
}  // namespace starsift

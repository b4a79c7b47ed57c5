#include "system/FileLock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "support/fixtures/ScratchDir.h"
#include "system/Descriptor.h"

namespace starsift {
namespace {

class FileLockTest : public testing::Test {
 protected:
  Descriptor open() const { return Descriptor(::open(path_.c_str(), O_RDONLY | O_CLOEXEC)); }

  test::ScratchDir dir_;
  std::string path_ = dir_.write("p.sol", "text");
};

TEST_F(FileLockTest, IsGrantedToOne) {
  const Descriptor other = open();
  {
    const Descriptor one = open();
    EXPECT_EQ(tryLock(one.number()), LockAttempt::granted);
    EXPECT_EQ(tryLock(other.number()), LockAttempt::busy);
  }
  EXPECT_EQ(tryLock(other.number()), LockAttempt::granted);
}

TEST_F(FileLockTest, OfNoFileIsUnsupported) {
  EXPECT_EQ(tryLock(-1), LockAttempt::unsupported);
}

TEST_F(FileLockTest, NamesItsHolder) {
  const Descriptor file = open();
  EXPECT_EQ(lockHolder(file.number()), std::nullopt);
  ASSERT_EQ(tryLock(file.number()), LockAttempt::granted);
  const auto holder = lockHolder(open().number());
  if (!holder) GTEST_SKIP() << "this system doesn't show locks";
  EXPECT_EQ(holder, getpid());
}

TEST(StoppedProcess, IsOneThatWasStoppedAndDoesNotGoOn) {
  EXPECT_FALSE(isStopped(getpid()));
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0)
    while (true) pause();
  kill(child, SIGSTOP);
  int status = 0;
  waitpid(child, &status, WUNTRACED);
  EXPECT_TRUE(isStopped(child));
  kill(child, SIGCONT);
  waitpid(child, &status, WCONTINUED);
  EXPECT_FALSE(isStopped(child));
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  EXPECT_FALSE(isStopped(child));
}

}  // namespace
}  // namespace starsift

#include "app/StatusLine.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace starsift {
namespace {

using std::chrono::milliseconds;

const std::string erase = "\r\033[K";

class StatusLineTest : public testing::Test {
 protected:
  StatusLine::Clock::time_point start_;
  std::stringbuf terminal_;
};

TEST_F(StatusLineTest, IsFirstDueBehindTheInterval) {
  const StatusLine line(&terminal_, start_);
  EXPECT_FALSE(line.isDue(start_ + milliseconds(999)));
  EXPECT_TRUE(line.isDue(start_ + milliseconds(1000)));
}

TEST_F(StatusLineTest, IsDueAgainAnIntervalBehindTheLastDrawing) {
  StatusLine line(&terminal_, start_);
  line.draw("pass 1", start_ + milliseconds(1500));
  EXPECT_FALSE(line.isDue(start_ + milliseconds(2499)));
  EXPECT_TRUE(line.isDue(start_ + milliseconds(2500)));
}

TEST_F(StatusLineTest, IsDrawnOverTheOneBefore) {
  StatusLine line(&terminal_, start_);
  line.draw("pass 10", start_);
  line.draw("pass 1", start_);
  EXPECT_EQ(terminal_.str(), erase + "pass 10" + erase + "pass 1");
}

TEST_F(StatusLineTest, NeverBreaksIntoASecondLine) {
  StatusLine line(&terminal_, start_);
  line.draw(std::string(200, 'x'), start_);
  EXPECT_EQ(terminal_.str(), erase + std::string(79, 'x'));
}

TEST_F(StatusLineTest, HasTheWidthThatTheTerminalHasAtTheDrawing) {
  std::size_t width = 5;
  StatusLine line(&terminal_, start_, [&width] { return width; });
  line.draw("pass 100", start_);
  width = 7;
  line.draw("pass 100", start_);
  EXPECT_EQ(terminal_.str(), erase + "pass " + erase + "pass 10");
}

TEST_F(StatusLineTest, HasTheUsualWidthWhereThereIsNoTerminal) {
  EXPECT_EQ(statusWidth(-1), StatusLine::usualWidth);
}

TEST_F(StatusLineTest, IsErasedOnceInTheEnd) {
  {
    StatusLine line(&terminal_, start_);
    line.draw("pass 1", start_);
    line.clear();
  }
  EXPECT_EQ(terminal_.str(), erase + "pass 1" + erase);
}

TEST_F(StatusLineTest, ThatWasNeverDrawnIsNotErased) {
  {
    StatusLine line(&terminal_, start_);
    line.clear();
  }
  EXPECT_EQ(terminal_.str(), "");
}

TEST_F(StatusLineTest, WithoutTerminalIsNeverDue) {
  StatusLine line(nullptr, start_);
  EXPECT_FALSE(line.isDue(start_ + std::chrono::hours(1)));
  line.draw("pass 1", start_);
  line.clear();
}

TEST_F(StatusLineTest, MakesRoomForWhatIsWritten) {
  StatusLine line(&terminal_, start_);
  std::ostream stream(&terminal_);
  {
    const ClearedStream cleared(stream, line);
    line.draw("pass 1", start_);
    stream << "Solutions" << ' ' << 3 << std::endl;
    line.draw("pass 2", start_);
    stream.put('!');
  }
  EXPECT_EQ(terminal_.str(),
            erase + "pass 1" + erase + "Solutions 3\n" + erase + "pass 2" + erase + "!");
}

TEST_F(StatusLineTest, LeavesTheStreamAsItWas) {
  StatusLine line(&terminal_, start_);
  std::ostringstream stream;
  std::streambuf* const buffer = stream.rdbuf();
  { const ClearedStream cleared(stream, line); }
  EXPECT_EQ(static_cast<std::ostream&>(stream).rdbuf(), buffer);
}

}  // namespace
}  // namespace starsift

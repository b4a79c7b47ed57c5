// The console's memory: nested progress lines, the moment of the last output and
// of the last failure, and the switch for extended output.
//
// Nothing here writes by itself except report(): the functions return the text
// that opens or ends a line, and the caller sends it where the line goes. A nested
// block of two levels looks like
//
//   |-> Reducing lattice ...
//   |    |-> Pass 1
#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <ostream>
#include <string>
#include <string_view>

namespace starsift {

/// Nesting levels, 0 to consoleLevels - 1.
constexpr std::int64_t consoleLevels = 128;

/// All the console remembers; one per process. `consoleState() = {}` starts anew.
struct ConsoleState {
  /// Current nesting level, 0 <= depth < consoleLevels.
  std::int64_t depth = 0;
  /// Per level: a line of this level was ended by endLine(), the block goes on.
  std::array<bool, consoleLevels> lineOpen{};
  /// Per level: the next stamp must begin a new line.
  std::array<bool, consoleLevels> lineStarted{};
  /// Seconds since the epoch, 0 while there was none.
  std::time_t lastOutputTime = 0;
  std::time_t lastFailureTime = 0;
  /// Detailed statistics: true while the parameter verb is exactly 2.
  bool extendedOutput = false;
};

ConsoleState& consoleState();

/// The prefix of a progress line; enters one level. It starts with a line feed
/// when a line of the current level is under way, and ends with "->" unless
/// `plain`. Going beyond the last level is fatal: "Maximum thread depth reached".
std::string openStamp(bool plain);

/// The text that ends a level; leaves it, except at level 0. A line feed when the
/// level still owes one, else nothing; nothing either with `keep` when endLine()
/// has ended a line of this level before.
std::string closeStamp(bool keep);

/// A line feed; marks the current level as having just ended a line.
std::string endLine();

/// A line feed; all levels are left and their marks cleared.
std::string resetConsole();

std::int64_t consoleDepth();

/// Goes back to a remembered depth, 0 <= depth < consoleLevels, when a step was
/// given up in the middle of its blocks. Levels above it forget their marks.
void setConsoleDepth(std::int64_t depth);

/// Wall-clock seconds since the epoch.
std::time_t lastOutputTime();
void stampOutputTime();
/// More than an hour passed since the last output: a long step may say where it is.
bool consoleWasSilent();
std::time_t lastFailureTime();
void stampFailureTime();

bool extendedOutput();
void setExtendedOutput(bool on);

/// One informative line: opening stamp, one blank, `message`, closing stamp.
/// Stamps the output time.
void report(std::ostream& stream, std::string_view message);

}  // namespace starsift

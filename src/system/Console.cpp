#include "system/Console.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "system/Failure.h"
#include "system/HostedCall.h"

namespace starsift {

namespace {

/// The flag of the current level.
bool& current(std::array<bool, consoleLevels>& flags) {
  return flags[static_cast<std::size_t>(consoleState().depth)];
}

/// Clears the marks of the levels `from` and above.
void forgetLevels(std::int64_t from) {
  ConsoleState& state = consoleState();
  std::fill(state.lineOpen.begin() + from, state.lineOpen.end(), false);
  std::fill(state.lineStarted.begin() + from, state.lineStarted.end(), false);
}

/// Takes what nobody reads.
std::ostream& silence() {
  thread_local std::ostream stream(nullptr);
  return stream;
}

}  // namespace

ConsoleState& consoleState() {
  thread_local ConsoleState state;
  return state;
}

std::string openStamp(bool plain) {
  ConsoleState& state = consoleState();
  std::string stamp;
  if (std::exchange(current(state.lineStarted), false)) stamp += '\n';
  stamp += '|';
  for (std::int64_t level = 0; level < state.depth; ++level) stamp += "    |";
  if (!plain) stamp += "->";
  // Ending the line of the failure report marks the current level, which therefore
  // must still be valid.
  if (state.depth + 1 == consoleLevels) fail("Maximum thread depth reached");
  ++state.depth;
  current(state.lineStarted) = true;
  return stamp;
}

std::string closeStamp(bool keep) {
  ConsoleState& state = consoleState();
  const bool owesLineFeed = std::exchange(current(state.lineStarted), false);
  const bool endedBefore = current(state.lineOpen);
  if (state.depth > 0) {
    current(state.lineOpen) = false;
    --state.depth;
  }
  return owesLineFeed && !(endedBefore && keep) ? "\n" : "";
}

std::string endLine() {
  ConsoleState& state = consoleState();
  current(state.lineOpen) = true;
  current(state.lineStarted) = false;
  return "\n";
}

std::string resetConsole() {
  forgetLevels(0);
  consoleState().depth = 0;
  return "\n";
}

std::int64_t consoleDepth() {
  return consoleState().depth;
}

void setConsoleDepth(std::int64_t depth) {
  forgetLevels(depth + 1);
  consoleState().depth = depth;
}

std::time_t lastOutputTime() {
  return consoleState().lastOutputTime;
}
void stampOutputTime() {
  consoleState().lastOutputTime = std::time(nullptr);
}
bool consoleWasSilent() {
  constexpr std::time_t interval = 3600;
  return std::time(nullptr) - lastOutputTime() > interval;
}
std::time_t lastFailureTime() {
  return consoleState().lastFailureTime;
}
void stampFailureTime() {
  consoleState().lastFailureTime = std::time(nullptr);
}

bool extendedOutput() {
  return consoleState().extendedOutput;
}
void setExtendedOutput(bool on) {
  consoleState().extendedOutput = on;
}

std::ostream& reportStream() {
  return HostedCall::isUnderWay() ? silence() : std::cout;
}

std::ostream& remarkStream() {
  return HostedCall::isUnderWay() ? silence() : std::cerr;
}

void report(std::ostream& stream, std::string_view message) {
  stream << openStamp(false) << ' ' << message << closeStamp(false);
  stampOutputTime();
}

}  // namespace starsift

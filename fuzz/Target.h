// What a fuzz target is made of. Each file of fuzz/targets/ defines runTarget(); a
// main of libFuzzer's or of the replay calls it.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace starsift::fuzz {

/// Stands for the end of the process: what the handler of fail() throws while runOnce()
/// runs, with the report as its text.
struct Failure {
  std::string report;
};

/// Feeds the bytes to the code under test. Refusals of bad input may leave it as
/// Failure or std::exception; anything else that goes wrong ends the process.
void runTarget(std::string_view bytes);

/// runTarget() without the refusals.
void runOnce(std::string_view bytes);

/// Ends the process with `claim` on the error stream where it doesn't hold.
void require(bool holds, std::string_view claim);

/// The text that `action` gives, or that of its refusal.
template <class Action>
std::string outcomeOf(const Action& action) {
  try {
    return action();
  } catch (const Failure& failure) {
    return "*** " + failure.report;
  } catch (const std::exception& exception) {
    return std::string("*** ") + exception.what();
  }
}

/// A number of 0..count - 1 that the first byte decides; takes the byte. 0 where
/// there is none.
unsigned takeChoice(std::string_view& bytes, unsigned count);

}  // namespace starsift::fuzz

// The command line of starseek.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace starsift {

struct SeekArguments {
  /// --seed=N: chooses the random changes of restarts. Not stored with solutions.
  std::optional<std::uint64_t> seed;
  /// There is a parameter --sol.
  bool hasSol = false;
  /// The other arguments that start with a dash: parameters, "--name=value".
  std::vector<std::string> parameters;
  /// Path of the problem, empty unless exactly one other argument was given and it ends
  /// in ".opt".
  std::string optFile;
};

/// `arguments` without the name of the program. Fatal: a seed that isn't one of 0, 1, ... 2^64 - 1,
/// "Malformed parameter: seed=" and its text.
SeekArguments splitArguments(std::span<char* const> arguments);

}  // namespace starsift

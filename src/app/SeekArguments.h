// The command line of starseek.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace starsift {

struct SeekArguments {
  /// The arguments that start with a dash: parameters, "--name=value".
  std::vector<std::string> parameters;
  /// Path of the problem, empty unless exactly one other argument was given and it ends
  /// in ".opt".
  std::string optFile;
};

/// `arguments` without the name of the program.
SeekArguments splitArguments(std::span<char* const> arguments);

}  // namespace starsift

// The command line of starseek.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace starsift {

/// What the command is asked for beside the parameters of a lattice, which are stored with
/// solutions.
struct SeekOptions {
  struct Part {
    unsigned part;
    unsigned parts;
  };

  /// --prove and --prove=0: the complete search is forced or forbidden; empty: it is made if it
  /// can end in time.
  std::optional<bool> prove;
  /// --count: the solutions are counted and not kept.
  bool count = false;
  /// --threads=N: of the complete search, at least 1; empty: one a core.
  std::optional<unsigned> threads;
  /// --part=I/K: a part of the complete search, 1 <= I <= K <= mostParts.
  std::optional<Part> part;
  /// --profile=FILE.svg: the picture of a reduction is drawn there; empty: none.
  std::string profile{};
  /// --join: the parts that were searched are joined.
  bool join = false;
  /// --json: the output ends with one line for scripts.
  bool json = false;
  /// -h, --help.
  bool help = false;
  /// --version.
  bool version = false;
};

struct SeekArguments {
  SeekOptions options;
  /// --seed=N: chooses the random changes of restarts. Not stored with solutions.
  std::optional<std::uint64_t> seed;
  /// There is a parameter --sol.
  bool hasSol = false;
  /// The other arguments that start with a dash: parameters, "--name=value".
  std::vector<std::string> parameters;
  /// Path of the problem, empty unless exactly one other argument was given and it ends
  /// in ".opt"; with --join it may be named without the ending.
  std::string optFile;
};

/// `arguments` without the name of the program. Of two that set the same option the last one
/// counts. Fatal: a seed that isn't one of 0, 1, ... 2^64 - 1, a number of threads that isn't
/// one of 1, 2, ... 1024, a part that isn't I/K as above, or a profile that doesn't end in ".svg",
/// "Malformed parameter: seed=" and so on with its text; and options that exclude each other.
SeekArguments splitArguments(std::span<char* const> arguments);

/// What --help tells of the options, in the form of writeParamHelp().
extern const char* const optionsHelp;

}  // namespace starsift

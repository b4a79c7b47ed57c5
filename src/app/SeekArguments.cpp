#include "app/SeekArguments.h"

#include <limits>
#include <string_view>

#include "files/TreeState.h"
#include "system/Failure.h"
#include "text/IntegerText.h"
#include "text/Text.h"

namespace starsift {

namespace {

/// Sets the switch if the argument is "--name", "--name=1" or "--name=0".
template <class Switch>
bool readSwitch(const std::string& argument, const std::string& name, Switch& value) {
  if (argument != name && argument != name + "=1" && argument != name + "=0") return false;
  value = !argument.ends_with("=0");
  return true;
}

/// The rest of an argument that begins with `name`.
std::optional<std::string_view> valueOf(std::string_view argument, std::string_view name) {
  if (!argument.starts_with(name)) return std::nullopt;
  return argument.substr(name.size());
}

[[noreturn]] void refuse(const std::string& name, std::string_view text) {
  fail("Malformed parameter: " + name + '=' + std::string(text));
}

/// An integer from `least` to `most` as the value of a parameter; anything else is fatal.
template <class Number>
Number numberOf(const std::string& name, std::string_view text, Number least, Number most) {
  const std::optional<Number> number = parseInteger(text, least, most);
  if (!number) refuse(name, text);
  return *number;
}

/// More are a slip of the pen.
constexpr unsigned mostThreads = 1024;

/// "3/8".
SeekOptions::Part partOf(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) refuse("part", text);
  const auto parts = parseInteger(text.substr(slash + 1), 1U, mostParts);
  const auto part = parseInteger(text.substr(0, slash), 1U, parts.value_or(0));
  if (!part || !parts) refuse("part", text);
  return {*part, *parts};
}

void checkTogether(const SeekOptions& options) {
  if (options.part && options.join) fail("--part and --join exclude each other");
  if (options.part && !options.prove.value_or(true))
    fail("--part is a part of a complete search, which --prove=0 forbids");
}

bool readOption(const std::string& argument, SeekOptions& options) {
  if (argument == "-h" || argument == "--help") return options.help = true;
  if (argument == "--version") return options.version = true;
  if (const auto text = valueOf(argument, "--threads=")) {
    options.threads = numberOf("threads", *text, 1U, mostThreads);
    return true;
  }
  if (const auto text = valueOf(argument, "--part=")) {
    options.part = partOf(*text);
    return true;
  }
  if (const auto text = valueOf(argument, "--profile=")) {
    if (!endsWith(*text, ".svg")) refuse("profile", *text);
    options.profile = *text;
    return true;
  }
  return readSwitch(argument, "--prove", options.prove) ||
         readSwitch(argument, "--join", options.join) ||
         readSwitch(argument, "--count", options.count) ||
         readSwitch(argument, "--json", options.json);
}

}  // namespace

const char* const optionsHelp =
    "  -h, --help\n"
    "      Display this help information.\n"
    "  --version\n"
    "      Display the version.\n"
    "  --prove, --prove=0\n"
    "      Search completely however long it takes; never. Without this option a\n"
    "      complete search is made if it can end within --rtime, or within ten minutes\n"
    "      if that is not set.\n"
    "  --count\n"
    "      Count all solutions without keeping them.\n"
    "  --threads=N\n"
    "      Search in N threads: in lattices of N seeds, by walks, and in the tree of a\n"
    "      complete search. One for each core without this option. The solutions of a\n"
    "      complete search and what is proved don't depend on it.\n"
    "  --part=I/K\n"
    "      Make the I-th of K parts of a complete search, on any machine. Its solutions\n"
    "      are in FILE.part-I-of-K.sol, how far it is in FILE.part-I-of-K.state, from\n"
    "      where the same command goes on. The status is 2 as long as it isn't complete.\n"
    "      1/1 is a complete search that goes on where it was, with FILE.sol and\n"
    "      FILE.state.\n"
    "  --join\n"
    "      Join the parts of FILE that lie beside it: their solutions are checked and\n"
    "      added to FILE.sol, and what they prove together is said, or which are missing\n"
    "      (status 2).\n"
    "  --profile=FILE.svg\n"
    "      Draw the lengths of the Gram-Schmidt vectors of the complete search's basis:\n"
    "      before reductions, after LLL reduction, and after block reduction in blocks\n"
    "      of up to --beta rows. Needs gnuplot.\n"
    "  --json\n"
    "      End the output with a line for scripts, a JSON object.\n"
    "  --seed=N\n"
    "      Choose the random changes of restarts.\n";

SeekArguments splitArguments(std::span<char* const> arguments) {
  SeekArguments result;
  std::vector<std::string> files;
  for (const std::string argument : arguments) {
    if (readOption(argument, result.options)) continue;
    if (const auto text = valueOf(argument, "--seed=")) {
      constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
      result.seed = numberOf<std::uint64_t>("seed", *text, 0, most);
      continue;
    }
    result.hasSol = result.hasSol || argument.starts_with("--sol=");
    (argument.starts_with('-') ? result.parameters : files).push_back(argument);
  }
  checkTogether(result.options);
  if (files.size() != 1) return result;
  if (endsWith(files.front(), ".opt"))
    result.optFile = files.front();
  else if (result.options.join)
    result.optFile = files.front() + ".opt";
  return result;
}

}  // namespace starsift

#include "app/SeekArguments.h"

#include <charconv>
#include <string_view>

#include "system/Failure.h"
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

bool readOption(const std::string& argument, SeekOptions& options) {
  if (argument == "-h" || argument == "--help") return options.help = true;
  if (argument == "--version") return options.version = true;
  return readSwitch(argument, "--prove", options.prove) ||
         readSwitch(argument, "--count", options.count) ||
         readSwitch(argument, "--json", options.json);
}

constexpr std::string_view seedOption = "--seed=";

std::uint64_t seedOf(std::string_view text) {
  std::uint64_t seed = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, seed);
  if (result.ec != std::errc() || result.ptr != end)
    fail("Malformed parameter: seed=" + std::string(text));
  return seed;
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
    "  --json\n"
    "      End the output with a line for scripts, a JSON object.\n"
    "  --seed=N\n"
    "      Choose the random changes of restarts.\n";

SeekArguments splitArguments(std::span<char* const> arguments) {
  SeekArguments result;
  std::vector<std::string> files;
  for (const std::string argument : arguments) {
    if (readOption(argument, result.options)) continue;
    if (argument.starts_with(seedOption)) {
      result.seed = seedOf(std::string_view(argument).substr(seedOption.size()));
      continue;
    }
    result.hasSol = result.hasSol || argument.starts_with("--sol=");
    (argument.starts_with('-') ? result.parameters : files).push_back(argument);
  }
  if (files.size() == 1 && endsWith(files.front(), ".opt")) result.optFile = files.front();
  return result;
}

}  // namespace starsift

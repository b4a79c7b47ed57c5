#include "app/SeekArguments.h"

#include <charconv>
#include <string_view>

#include "system/Failure.h"
#include "text/Text.h"

namespace starsift {

namespace {

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

SeekArguments splitArguments(std::span<char* const> arguments) {
  SeekArguments result;
  std::vector<std::string> files;
  for (const std::string argument : arguments) {
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

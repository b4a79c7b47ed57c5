#include "app/port/PortOptions.h"

#include <algorithm>
#include <array>

namespace starsift {

namespace {

constexpr PortJobs importing = only(PortJob::importModel);
constexpr PortJobs addingSolutions = only(PortJob::importSolutions);
constexpr PortJobs exporting = only(PortJob::exportModel);
constexpr PortJobs explaining = only(PortJob::explain);
constexpr PortJobs handing = only(PortJob::solutionOf);
constexpr PortJobs anything = ~0U;

constexpr std::string_view written = "files that are written";
constexpr std::string_view models = "models that are read";
constexpr std::string_view base = "models that become BASE.opt";
constexpr std::string_view added = "solutions that are added to BASE.sol";
constexpr std::string_view solutions = "solution files of solvers";

constexpr std::array<PortOption, 21> options{{
    {"help", false, anything, ""},
    {"version", false, anything, ""},
    {"explain", false, explaining, "runs without --solution-of"},
    {"solution-of", false, handing, "runs without --explain"},
    // With an export its own refusal tells more.
    {"solution", true, addingSolutions | exporting, added},
    {"output", true, importing | exporting | handing, written},
    {"format", true, anything, ""},
    {"repair", false, addingSolutions, added},
    {"force", false, importing | exporting | handing, written},
    {"rows", false, explaining, "--explain"},
    {"json", false, anything, ""},
    {"record", true, handing, "--solution-of"},
    {"for", true, handing, "--solution-of"},
    {"decimals", true, importing, base},
    {"constant", false, importing, base},
    {"max-size", true, importing, base},
    {"infinity", true, readingAModel, models},
    {"integer-upper", true, readingAModel, models},
    {"integrality", true, addingSolutions | explaining, solutions},
    {"snap", true, addingSolutions | explaining, solutions},
    {"keep-rounded", false, addingSolutions | explaining, solutions},
}};

}  // namespace

const PortOption* portOption(std::string_view name) {
  const auto* const found = std::ranges::find(options, name, &PortOption::name);
  return found == options.end() ? nullptr : found;
}

}  // namespace starsift

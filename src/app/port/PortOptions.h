// The options of starport, and which of its jobs each applies to.
#pragma once

#include <string_view>

namespace starsift {

/// What starport is asked to do.
enum class PortJob {
  importModel,
  /// Adds solutions of an exported problem to its records.
  importSolutions,
  exportModel,
  explain,
  solutionOf,
  usage,
  help,
  version,
};

/// A set of jobs with a bit each.
using PortJobs = unsigned;

constexpr PortJobs only(PortJob job) {
  return 1U << static_cast<unsigned>(job);
}

/// Beside the jobs: a model is read, not a problem.
constexpr PortJobs readingAModel = 1U << 31U;

struct PortOption {
  std::string_view name;
  bool takesValue;
  PortJobs jobs;
  /// What it applies to, for the refusal of others.
  std::string_view use;
};

/// The option of that name, without the dashes before it; a null pointer for none.
const PortOption* portOption(std::string_view name);

}  // namespace starsift

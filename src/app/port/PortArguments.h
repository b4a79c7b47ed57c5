// The command line of starport.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "models/jobs/Import.h"
#include "models/jobs/SolutionText.h"

namespace starsift {

/// What starport is asked to do.
enum class PortJob { import, explain, solutionOf, usage, help, version };

struct PortArguments {
  PortJob job = PortJob::import;
  /// The arguments that aren't options, in order.
  std::vector<std::string> files;
  std::vector<std::string> solutions;
  /// Of -o, empty without it.
  std::string output;
  /// Of --record: 0 for all.
  std::size_t record = 1;
  SolutionForm form = SolutionForm::miplib;
  bool showsRows = false;
  bool isJson = false;
  ImportOptions options;
};

/// `arguments` without the name of the program. An option has its value behind "=" or as the next
/// argument. ModelError for an unknown option and a bad value.
PortArguments readPortArguments(std::span<char* const> arguments);

/// The text of --help.
std::string portHelp();

}  // namespace starsift

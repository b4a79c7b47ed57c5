// The command line of starport.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "app/port/PortOptions.h"
#include "models/jobs/Import.h"
#include "models/jobs/SolutionText.h"

namespace starsift {

struct PortArguments {
  PortJob job = PortJob::importModel;
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
/// argument. ModelError for an unknown option, a bad value, and options that don't apply to the
/// job.
PortArguments readPortArguments(std::span<char* const> arguments);

/// The text of --help.
std::string portHelp();

}  // namespace starsift

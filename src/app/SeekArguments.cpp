#include "app/SeekArguments.h"

#include "text/Text.h"

namespace starsift {

SeekArguments splitArguments(std::span<char* const> arguments) {
  SeekArguments result;
  std::vector<std::string> files;
  for (const std::string argument : arguments)
    (argument.starts_with('-') ? result.parameters : files).push_back(argument);
  if (files.size() == 1 && endsWith(files.front(), ".opt")) result.optFile = files.front();
  return result;
}

}  // namespace starsift

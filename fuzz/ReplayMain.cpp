// Runs a target on the files of a corpus, with any compiler: what was found once
// is looked at in every test run.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

#include "Target.h"
#include "text/InputText.h"

/// Usage: replay FOLDER. The last file named is the one that ended the process.
int main(int count, char** arguments) {
  if (count != 2) return EXIT_FAILURE;
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
    std::cout << entry.path().filename().string() << std::endl;
    const auto text = starsift::readFileText(entry.path().string());
    if (!text) return EXIT_FAILURE;
    starsift::fuzz::runOnce(text->view());
    ++files;
  }
  return files != 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

#include "app/RescueFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

#include "system/Console.h"
#include "system/Signals.h"

namespace starsift {

namespace {

/// Name of the present rescue file; empty if there is none.
std::string& presentName() {
  static std::string name;
  return name;
}

/// The name of a new empty file beside `path`; empty if none can be created.
std::string createdBeside(const std::string& path) {
  std::string name = path + ".found.XXXXXX";
  const int descriptor = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) return "";
  close(descriptor);
  return name;
}

/// False if the text can't be written; that isn't fatal here.
bool writeFile(const std::string& path, const std::string& text) {
  const SizeSignalIgnored ignored;
  std::ofstream file(path);
  file << text;
  file.close();
  return !file.fail();
}

}  // namespace

RescueFile::RescueFile(const YSolutionFile& stars) {
  if (!stars.hasStars()) return;
  name_ = createdBeside(stars.path());
  if (name_.empty()) return;
  if (writeFile(name_, stars.text()))
    presentName() = name_;
  else
    remove();
}

void RescueFile::remove() {
  if (name_.empty()) return;
  unlink(name_.c_str());
  name_.clear();
  presentName().clear();
}

void RescueFile::leave() {
  if (name_.empty()) return;
  std::cerr << "*** " << rescueRemark() << endLine();
  stampOutputTime();
  name_.clear();
  presentName().clear();
}

std::string rescueRemark() {
  return presentName().empty() ? "" : "The stars of this search are in " + presentName() + '.';
}

}  // namespace starsift

#include "app/RescueFile.h"

#include <iostream>
#include <string_view>

#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/Signals.h"
#include "system/WholeWrite.h"

namespace starsift {

namespace {

constexpr const char* suffix = ".found";
/// Bytes of a name that leave room for what is added to it.
constexpr std::size_t longestName = 240;
constexpr mode_t ownersMode = 0600;

/// Path of the present rescue file; empty if there is none.
std::string& presentPath() {
  static std::string path;
  return path;
}

/// The part of a path up to its last slash, and the name after it.
std::string folderOf(const std::string& path) {
  return path.substr(0, path.rfind('/') + 1);
}
std::string nameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

RescueFile::RescueFile(const YSolutionFile& stars) {
  if (!stars.hasStars()) return;
  const std::string& path = stars.path();
  if (!write(path, stars)) write(nameOf(path), stars);
}

bool RescueFile::write(const std::string& path, const YSolutionFile& stars) {
  const SizeSignalIgnored ignored;
  try {
    // In the folder that the user has named, not where a link from there leads.
    place_.emplace(path + suffix);
  } catch (const LinkException&) {
    return false;
  }
  if (!place_->isReachable()) return false;
  const std::string prefix = nameOf(path).substr(0, longestName) + suffix + '.';
  Descriptor file = place_->create(prefix, ownersMode, name_);
  if (!file.isOpen()) {
    name_.clear();
    return false;
  }
  // Written through the descriptor: by its name the file could be another one by now.
  const auto add = [&file](std::string_view text) { return writeAll(file.number(), text); };
  const bool whole = stars.writeText(add) && syncFile(file.number());
  if (file.close() && whole) {
    presentPath() = folderOf(path) + name_;
    return true;
  }
  remove();
  return false;
}

void RescueFile::remove() {
  if (name_.empty()) return;
  place_->unlinkBeside(name_);
  name_.clear();
  presentPath().clear();
}

void RescueFile::leave() {
  std::cerr << "*** "
            << (name_.empty() ? "The stars of this search are in its report only" : rescueRemark())
            << endLine();
  stampOutputTime();
  name_.clear();
  presentPath().clear();
}

std::string rescueRemark() {
  return presentPath().empty() ? "" : "The stars of this search are in " + presentPath() + '.';
}

}  // namespace starsift

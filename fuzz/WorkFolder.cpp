#include "WorkFolder.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "Target.h"

namespace starsift::fuzz {

namespace {

/// Exists from first use to the end of the process.
class Folder {
 public:
  Folder() {
    std::filesystem::path base = "/dev/shm";
    if (!std::filesystem::is_directory(base)) base = std::filesystem::temp_directory_path();
    std::string name = base / "starsift-fuzz-XXXXXX";
    require(mkdtemp(name.data()) != nullptr, "there is a place for scratch files");
    path_ = name;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace

std::filesystem::path workFile(const std::string& name) {
  static const Folder folder;
  return folder.path() / name;
}

void writeFile(const std::filesystem::path& path, std::string_view text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream text;
  if (stream) text << stream.rdbuf();
  return text.str();
}

}  // namespace starsift::fuzz

// A directory of its own for a test that works on files.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace starsift::test {

/// Exists as long as the object, and everybody may work in it.
class ScratchDir {
 public:
  ScratchDir() {
    std::string name = testing::TempDir() + "scratch-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) std::abort();
    path_ = name;
    std::filesystem::permissions(path_, std::filesystem::perms::all);
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  ~ScratchDir() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }

  std::string file(const std::string& name) const { return path_ + "/" + name; }

  /// Writes a file and returns its path.
  std::string write(const std::string& name, std::string_view text) const {
    std::ofstream(file(name), std::ios::binary) << text;
    return file(name);
  }

  /// The text of a file, or a word for one that isn't there.
  std::string read(const std::string& name) const {
    std::ifstream stream(file(name), std::ios::binary);
    if (!stream) return "<no file>";
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
  }

  /// The names of everything in the directory, sorted.
  std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      result.push_back(entry.path().filename().string());
    std::sort(result.begin(), result.end());
    return result;
  }

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace starsift::test

// A file for benchmarks that read or write one.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace starsift::bench {

/// The path of a file in a folder of its own, which goes with the object.
class ScratchFile {
 public:
  ScratchFile() {
    std::string name = std::filesystem::temp_directory_path() / "bench-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) std::abort();
    folder_ = name;
  }
  explicit ScratchFile(std::string_view text) : ScratchFile() {
    std::ofstream(path(), std::ios::binary) << text;
  }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  std::string path() const { return folder_ / "stars.sol"; }

 private:
  std::filesystem::path folder_;
};

}  // namespace starsift::bench

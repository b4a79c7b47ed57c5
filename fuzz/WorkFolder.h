// Files of a run of the whole job, in a directory of this process.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace starsift::fuzz {

/// The path of a file there; in memory where the system has such a place.
std::filesystem::path workFile(const std::string& name);

void writeFile(const std::filesystem::path& path, std::string_view text);
/// Empty where there is no file.
std::string readFile(const std::filesystem::path& path);

}  // namespace starsift::fuzz

#include "core/System.h"

#include <unistd.h>

#include <cmath>
#include <fstream>
#include <sstream>

namespace starsift {

Index residentGibibytes(const std::string& statm) {
  std::ifstream file(statm);
  long double totalPages = 0;
  long double residentPages = 0;
  if (!(file >> totalPages >> residentPages)) return 0;
  const auto bytes = residentPages * static_cast<long double>(sysconf(_SC_PAGESIZE));
  return std::lround(std::ldexp(bytes, -30));
}

Index availableKibibytes(const std::string& meminfo) {
  std::ifstream file(meminfo);
  const std::string label = "MemAvailable:";
  std::string line;
  while (std::getline(file, line)) {
    if (!line.starts_with(label)) continue;
    Index kibibytes = 0;
    std::istringstream(line.substr(label.size())) >> kibibytes;
    return kibibytes;
  }
  return 0;
}

}  // namespace starsift

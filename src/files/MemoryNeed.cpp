#include "files/MemoryNeed.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "core/HostTools.h"
#include "stars/StarLine.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Smaller files fit, or the run ends at the first allocation that fails.
constexpr double largeFile = 64e6;
/// Bytes at the head of a file whose lines stand for all.
constexpr std::size_t sampleSize = std::size_t{1} << 16U;
/// Beside a line itself its slot in the table of duplicates, two of them at times.
constexpr double bytesPerLine = sizeof(StarLine) + 48;
constexpr double megabyte = 1e6;

/// Mean number of bytes of a line at the head of an open file.
double meanLine(int descriptor) {
  std::string head(sampleSize, '\0');
  const ssize_t count = pread(descriptor, head.data(), head.size(), 0);
  if (count <= 0) return static_cast<double>(sampleSize);
  const auto lines = std::count(head.begin(), head.begin() + count, '\n');
  return static_cast<double>(count) / static_cast<double>(std::max<std::ptrdiff_t>(lines, 1));
}

std::string megabytes(double bytes) {
  return std::to_string(static_cast<Index>(std::ceil(bytes / megabyte))) + " MB";
}

}  // namespace

void requireMemoryFor(const FilePlace& place) {
  const std::optional<struct stat> status = place.status();
  if (!status || !S_ISREG(status->st_mode)) return;
  const auto size = static_cast<double>(status->st_size);
  if (size < largeFile) return;
  const Descriptor file = place.open(O_RDONLY);
  if (!file.isOpen()) return;
  const double needed = size + size / meanLine(file.number()) * bytesPerLine;
  const double available = availableBytes();
  if (needed <= available) return;
  fail("Not enough memory for sol file " + place.path() + ": it takes " + megabytes(needed) +
       ", there is room for " + megabytes(available));
}

}  // namespace starsift

// The right stars of a solution file as lines: what remains of a star is its text in the file that
// was read and a hundred bytes, so that files of many gigabytes fit into memory.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <memory_resource>
#include <optional>
#include <vector>

#include "stars/StarCheck.h"
#include "stars/StarLine.h"
#include "text/InputText.h"

namespace starsift {

/// Lines and the storage of those that aren't in the input.
struct StarLines {
  std::vector<StarLine> lines;
  /// One for each part of the input.
  std::vector<std::unique_ptr<std::pmr::monotonic_buffer_resource>> arenas;
};

/// How far readRightStars() is.
struct ReadProgress {
  /// Bytes of the text.
  std::size_t done = 0;
  std::size_t all = 0;
  std::size_t kept = 0;
  /// Wrong stars and malformed records.
  std::size_t dropped = 0;
};

/// A problem prepared for readRightStars(), without what finite stars of its length don't need (see
/// StarChecker). Nothing if its rows don't fit its variables, or are fatal to a check.
std::optional<StarChecker<QQ>> lineChecker(const Vanu<QQ>& problem);

/// As many threads as there are cores.
constexpr unsigned allCores = 0;

/// Reads the stars of a solution file and checks them as checkStars() does after readStars(), in
/// the order of the file, by copies of `checker`, on up to `threads` threads, or allCores. The
/// check is exact, and the texts are those that T writes. `text` must outlive the result.
/// PrecisionException if T can't hold a right star. `watch` is called on this thread now and then.
///
/// Nothing if the lines would say less than stars: a star whose text T can't read back, one with
/// infinite components, one of another length, and everything that is fatal to a reader of stars,
/// in particular in a long text that can't be divided at its line ends.
template <class T>
std::optional<StarLines> readRightStars(const InputText& text, const StarChecker<QQ>& checker,
                                        unsigned threads,
                                        const std::function<void(const ReadProgress&)>& watch);

}  // namespace starsift

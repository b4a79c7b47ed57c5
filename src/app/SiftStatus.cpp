#include "app/SiftStatus.h"

#include <algorithm>

namespace starsift {

std::string siftStatus(const ReadProgress& progress) {
  constexpr std::size_t whole = 100;
  const std::size_t share = progress.done / std::max<std::size_t>(progress.all / whole, 1);
  return std::to_string(std::min(share, whole)) + " % of the file, " +
         "stars: " + std::to_string(progress.kept) + " kept, " + std::to_string(progress.dropped) +
         " dropped";
}

}  // namespace starsift

#include "app/HelperLattices.h"

#include <algorithm>
#include <chrono>

#include "app/SearchGoal.h"
#include "core/HostTools.h"
#include "system/HostedCall.h"

namespace starsift {

namespace {

/// Of a search before it is worth further lattices: most end before.
constexpr std::chrono::seconds soloTime{1};

/// Bytes of address space that a thread takes: its stack, and what the C library reserves for its
/// heap.
constexpr double threadSpace = 144e6;

/// Lattices as large as this process that have room, with their threads, in half of the memory that
/// is left; as many as are asked for where that isn't known.
unsigned roomFor(unsigned count) {
  const double available = availableBytes() / 2;
  const double each = peakResidentBytes() + threadSpace;
  return static_cast<unsigned>(std::min(static_cast<double>(count), available / each));
}

}  // namespace

bool HelperLattices::look() {
  if (isDue()) {
    threads_.emplace(source());
    threads_->start(roomFor(helperCount_), watch_.elapsed());
  }
  return threads_ && takeNews();
}

/// Other seeds must make other lattices, and the result of a number of passes be that of one
/// thread.
bool HelperLattices::isDue() const {
  const Params& params = lattice_.params();
  return !threads_ && helperCount_ > 0 && params.variate && params.iters < 0 &&
         watch_.elapsed() >= soloTime && wantsFurther(lattice_, stars_, wantsBest_);
}

LatticeSource HelperLattices::source() const {
  // Parameters without semaphores.
  const HostedCall call;
  LatticeSource source{problem_, ExtendedParams<QQ>(), lattice_.seed(), lattice_.seeksBest()};
  lattice_.withLive([&source](const auto& live) { source.params.convertFrom(live.params); });
  return source;
}

void HelperLattices::end() {
  if (!threads_) return;
  threads_->end();
  takeNews();
}

bool HelperLattices::takeNews() {
  bool isOver = false;
  for (const Star<QQ>& star : threads_->takeNews()) isOver = take(star) || isOver;
  return isOver;
}

bool HelperLattices::take(const Star<QQ>& star) {
  if (!wantsFurther(lattice_, stars_, wantsBest_)) return false;
  const std::optional<QQ> known = stars_.leastKnownNorm();
  if (wantsBest_ && known && !(star.targetNorm < *known)) return false;
  return stars_.add(star, wantsBest_) || !wantsBest_;
}

}  // namespace starsift

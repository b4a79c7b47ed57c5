#include "app/Jump.h"

#include "app/SearchGoal.h"

namespace starsift {

bool Jump::run(std::chrono::duration<double> time) {
  if (!wantsFurther(lattice_, stars_, wantsBest_)) return false;
  if (!search_) search_.emplace(problem_, lattice_.seed(), threads_);
  if (!search_->isReady()) return false;
  if (const std::optional<QQ> known = stars_.leastKnownNorm(); wantsBest_ && known)
    search_->setKnown(*known);
  end_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
  search_->run(*this);
  if (ended_) throw SearchEnded(*ended_);
  return isOver_;
}

Step Jump::found(const Star<QQ>& judged) {
  const bool meetsNorms = stars_.add(judged, wantsBest_);
  isOver_ = meetsNorms || !wantsBest_;
  return isOver_ ? Step::stop : Step::goOn;
}

Step Jump::progress() {
  ended_ = watch_.endFound();
  return ended_ || Clock::now() >= end_ ? Step::stop : Step::goOn;
}

}  // namespace starsift

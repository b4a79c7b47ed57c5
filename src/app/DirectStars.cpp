#include "app/DirectStars.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/VectorHash.h"

namespace starsift {

namespace {

/// Solutions whose times a status may show.
constexpr Index shownStars = 3;

}  // namespace

bool DirectStars::add(const Star<QQ>& judged, bool isBest) {
  Star<QQ> star(judged);
  lattice_.signStar(star, paramsText_);
  sink_.add(star);
  hashes_.push_back(hashOf(star.x()));
  const bool meetsNorms = lattice_.meetsNorms(star);
  if (first_.dimension() < shownStars || isBest)
    append(first_, std::move(star));
  else
    ++furtherCount_;
  return meetsNorms;
}

void DirectStars::findRepeats() {
  if (hashes_.empty() || lattice_.lastFiled() == compared_) return;
  if (sorted_ < hashes_.size()) std::sort(hashes_.begin(), hashes_.end());
  sorted_ = hashes_.size();
  for (const auto& star : lattice_.starsFiledAfter(compared_)) {
    const std::size_t hash = hashOf(star.x());
    if (std::binary_search(hashes_.begin(), hashes_.end(), hash)) repeats_.insert(hash);
  }
  compared_ = lattice_.lastFiled();
}

std::optional<QQ> DirectStars::leastKnownNorm() const {
  std::optional<QQ> least;
  const auto take = [&least](const QQ& norm) {
    if (!least || norm < *least) least = norm;
  };
  // A benchmark run doesn't know the stars of the file.
  const std::optional<QQ> filed = sink_.leastSearchedNorm();
  if (filed && !(lattice_.params().bench > 0)) take(*filed);
  for (const auto& star : lattice_.starsFiledAfter(0)) take(star.targetNorm);
  for (Index i = 1; i <= first_.dimension(); ++i) take(first_[i].targetNorm);
  return least;
}

}  // namespace starsift

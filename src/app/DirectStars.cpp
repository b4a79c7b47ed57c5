#include "app/DirectStars.h"

#include <optional>
#include <utility>

namespace starsift {

namespace {

/// Solutions whose times a status may show.
constexpr Index shownStars = 3;

}  // namespace

bool DirectStars::add(const Star<QQ>& judged, bool isBest) {
  Star<QQ> star(judged);
  lattice_.signStar(star, paramsText_);
  sink_.add(star);
  const bool meetsNorms = lattice_.meetsNorms(star);
  if (first_.dimension() < shownStars || isBest)
    append(first_, std::move(star));
  else
    ++furtherCount_;
  return meetsNorms;
}

std::optional<QQ> DirectStars::leastKnownNorm() const {
  std::optional<QQ> least;
  const auto take = [&least](const QQ& norm) {
    if (!least || norm < *least) least = norm;
  };
  // A benchmark run doesn't know the stars of the file.
  const std::optional<QQ> filed = sink_.leastTargetNorm();
  if (filed && !(lattice_.params().bench > 0)) take(*filed);
  for (const auto& star : lattice_.starsFiledAfter(0)) take(star.targetNorm);
  for (Index i = 1; i <= first_.dimension(); ++i) take(first_[i].targetNorm);
  return least;
}

}  // namespace starsift

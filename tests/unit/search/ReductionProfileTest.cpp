#include "search/decide/ReductionProfile.h"

#include <gtest/gtest.h>

#include <numeric>
#include <optional>

#include "support/fixtures/EquationCoset.h"

namespace starsift {
namespace {

/// The solutions of an equation over variables from 0 to 3, with a basis far from reduced.
BoxCoset coset(std::size_t count) {
  std::vector<ZZ> row;
  for (std::size_t j = 0; j < count; ++j) row.emplace_back(static_cast<long>(j * j) + 3);
  BoxCoset coset = *test::cosetOfEquations({row}, {ZZ(90)}, std::vector<ZZ>(count),
                                           std::vector<ZZ>(count, ZZ(3)));
  for (std::size_t k = 0; k + 1 < coset.basis.size(); ++k)
    for (std::size_t j = 0; j < count; ++j) coset.basis[k][j] += ZZ(1000) * coset.basis[k + 1][j];
  return coset;
}

double volume(const ProfileCurve& curve) {
  return std::accumulate(curve.lengths.begin(), curve.lengths.end(), 0.0);
}

TEST(ReductionProfile, KeepsTheVolume) {
  const auto curves = reductionProfile(coset(14), 12, [] { return true; });
  ASSERT_EQ(curves.size(), 3);
  for (const ProfileCurve& curve : curves) {
    EXPECT_EQ(curve.lengths.size(), 13);
    EXPECT_NEAR(volume(curve), volume(curves[0]), 1e-6);
  }
}

TEST(ReductionProfile, IsFlatterAfterReduction) {
  const auto curves = reductionProfile(coset(14), 12, [] { return true; });
  const auto fall = [](const ProfileCurve& curve) {
    return curve.lengths.front() - curve.lengths.back();
  };
  EXPECT_GT(fall(curves[0]), 2 * fall(curves[1]));
  EXPECT_LT(fall(curves[2]), 1);
}

TEST(ReductionProfile, NamesTheLargestBlocks) {
  EXPECT_EQ(reductionProfile(coset(14), 12, [] { return true; }).back().name, "blocks of 12");
  EXPECT_EQ(reductionProfile(coset(14), 40, [] { return true; }).back().name, "blocks of 13");
  EXPECT_EQ(reductionProfile(coset(14), 0, [] { return true; }).back().name, "LLL");
}

TEST(ReductionProfile, HasTheCurvesMadeBeforeItsEnd) {
  EXPECT_EQ(reductionProfile(coset(14), 12, [] { return false; }).size(), 1);
}

}  // namespace
}  // namespace starsift

// The .lat file: a lattice and its check vectors as text.
#include <gtest/gtest.h>

#include "files/LatText.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using test::q;
using test::ScratchDir;

template <class T>
class LatTextOver : public testing::Test {
 protected:
  static LatticeData<T> data() {
    LatticeData<T> result;
    result.basis = Matrix<T>{{T(1), T(2)}, {T(-3), T(4)}};
    result.l = Vector<T>{-NumberTraits<T>::infinity(), T(1)};
    result.r = Vector<T>{NumberTraits<T>::infinity(), T(1)};
    result.c = Vector<T>{T(6), T(0)};
    result.rangeMultiple = T(12);
    result.lx = Vector<T>{T(0)};
    result.rx = Vector<T>{T(5)};
    result.hasTarget = true;
    result.ltu = T(-2);
    result.rtu = T(9);
    result.seconds = 77;
    return result;
  }
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LatTextOver, NumberTypes);

TYPED_TEST(LatTextOver, BlocksAreApart) {
  EXPECT_EQ(latText(this->data()),
            "[\n[ 1 2 ]\n[ -3 4 ]\n]\n\n"
            "[ -inf 1 ]\n[ inf 1 ]\n\n"
            "[ 6 0 ]\n12\n\n"
            "[ 0 ]\n[ 5 ]\n\n"
            "1\n[ -2 9 ]\n\n"
            "77\n\n"
            "// B -- l, r -- c, R -- lx, rx -- tuse, lrtu -- rtime\n");
}

TYPED_TEST(LatTextOver, TargetMayBeMissing) {
  LatticeData<TypeParam> data = this->data();
  data.hasTarget = false;
  data.ltu = data.rtu = TypeParam(0);
  EXPECT_NE(latText(data).find("\n\n0\n[ 0 0 ]\n\n77\n"), std::string::npos);
}

TYPED_TEST(LatTextOver, EmptyLatticeHasAllBlocks) {
  const std::string text = latText(LatticeData<TypeParam>());
  EXPECT_NE(text.find("\n\n[ ]\n[ ]\n\n[ ]\n0\n\n[ ]\n[ ]\n\n0\n[ 0 0 ]\n\n0\n\n//"),
            std::string::npos)
      << text;
}

TEST(LatText, NumbersHaveSeventeenDigits) {
  LatticeData<long double> data;
  data.rangeMultiple = 1 / 3.0L;
  data.c = Vector<long double>{123456789012345678.0L, 1e20L};
  const std::string text = latText(data);
  EXPECT_NE(text.find("[ 1.2345678901234568e+17 1e+20 ]\n0.33333333333333333\n"), std::string::npos)
      << text;
}

TEST(LatText, RationalsAreWhole) {
  LatticeData<QQ> data;
  data.rangeMultiple = q("123456789012345678901234567890");
  data.c = Vector<QQ>{q("123456789012345678901234567891")};
  const std::string text = latText(data);
  EXPECT_NE(text.find("[ 123456789012345678901234567891 ]\n123456789012345678901234567890\n"),
            std::string::npos)
      << text;
}

TEST(LatFile, TakesThePlaceOfTheOldOne) {
  const ScratchDir scratch;
  scratch.write("p.lat", "a much longer text than the new one\n");
  writeLat(scratch.file("p.lat"), "new\n");
  EXPECT_EQ(scratch.read("p.lat"), "new\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.lat"});
}

TEST(LatFile, IsPassedOverWithoutAWordWhereItCanNotBeOpened) {
  const ScratchDir scratch;
  testing::internal::CaptureStderr();
  writeLat(scratch.file("nowhere/p.lat"), "new\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(scratch.names().empty());
}

}  // namespace
}  // namespace starsift

#include "files/SolWriter.h"

#include "numbers/Conversion.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ScratchDir.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::q;
using test::ScratchDir;

template <class T>
class SolWriterOver : public testing::Test {
 protected:
  static Star<T> star() {
    Star<T> star{T(1), T(-2)};
    star.targetNorm = T(-6);
    star.targetValues = Vector<T>{T(7), T(3)};
    star.slackNorm = T(1);
    star.time = 12;
    star.paramsText = "--beta=20";
    star.versionText = "2.4.2";
    return star;
  }

  static Array<Star<T>> only(const Star<T>& star) {
    Array<Star<T>> stars(1);
    stars[1] = star;
    return stars;
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(SolWriterOver, LatticeNumbers);

TYPED_TEST(SolWriterOver, RecordHasSevenFields) {
  EXPECT_EQ(starText(this->star()), "[ 1 -2 ] | -6 | [ 7 3 ] | 1 | 12 | --beta=20 | 2.4.2");
}

TYPED_TEST(SolWriterOver, RecordWithoutVersionHasSixFields) {
  Star<TypeParam> star = this->star();
  star.versionText.clear();
  EXPECT_EQ(starText(star), "[ 1 -2 ] | -6 | [ 7 3 ] | 1 | 12 | --beta=20");
}

TYPED_TEST(SolWriterOver, EmptyParametersLeaveTheirBar) {
  Star<TypeParam> star = this->star();
  star.paramsText.clear();
  star.versionText.clear();
  EXPECT_EQ(starText(star), "[ 1 -2 ] | -6 | [ 7 3 ] | 1 | 12 | ");
}

TYPED_TEST(SolWriterOver, EmptyParametersBeforeAVersion) {
  Star<TypeParam> star = this->star();
  star.paramsText.clear();
  EXPECT_EQ(starText(star), "[ 1 -2 ] | -6 | [ 7 3 ] | 1 | 12 |  | 2.4.2");
}

TYPED_TEST(SolWriterOver, UnknownTimeIsMinusOne) {
  EXPECT_EQ(starText(Star<TypeParam>{TypeParam(3)}), "[ 3 ] | 0 | [ ] | 0 | -1 | ");
}

TYPED_TEST(SolWriterOver, InfinitiesHaveTheirWord) {
  const TypeParam inf = NumberTraits<TypeParam>::infinity();
  Star<TypeParam> star{inf, TypeParam(-inf)};
  star.targetNorm = -inf;
  EXPECT_EQ(starText(star), "[ inf -inf ] | -inf | [ ] | 0 | -1 | ");
}

TEST(StarText, ComponentsOfLongDoubleHaveSeventeenDigits) {
  EXPECT_EQ(starText(Star<long double>{0.12345678901234567L, 12345678901234567.0L}),
            "[ 0.12345678901234567 12345678901234567 ] | 0 | [ ] | 0 | -1 | ");
}

TEST(StarText, DecimalsOfLongDoubleAreShort) {
  EXPECT_EQ(starText(Star<long double>{0.1L, 2.5L, 1e-5L, 1e17L}),
            "[ 0.1 2.5 1e-05 1e+17 ] | 0 | [ ] | 0 | -1 | ");
}

TEST(StarText, NormsAndValuesOfLongDoubleHaveSixDigits) {
  Star<long double> star{1.0L};
  star.targetNorm = 1234567.5L;
  star.targetValues = Vector<long double>{0.1234567L, 1000000.0L};
  star.slackNorm = 0.00001L;
  EXPECT_EQ(starText(star), "[ 1 ] | 1.23457e+06 | [ 0.123457 1e+06 ] | 1e-05 | -1 | ");
}

TEST(StarText, RationalsAreExactEverywhere) {
  Star<QQ> star{q("5/2"), q("-1/3"), q("12345678901234567890")};
  star.targetNorm = q("1234567.5");
  star.targetValues = Vector<QQ>{q("-7/2")};
  star.slackNorm = q("1/1000000");
  EXPECT_EQ(starText(star),
            "[ 2:1/2 -1/3 12345678901234567890 ] | 1234567:1/2 | [ -3:1/2 ] | 1/1000000 | -1 | ");
}

TYPED_TEST(SolWriterOver, FileHasOneLineAStar) {
  const ScratchDir scratch;
  Array<Star<TypeParam>> stars(2);
  stars[1] = this->star();
  stars[2] = Star<TypeParam>{TypeParam(3)};
  writeStars(scratch.file("p.sol"), stars);
  EXPECT_EQ(scratch.read("p.sol"), starText(stars[1]) + "\n" + starText(stars[2]) + "\n");
}

TYPED_TEST(SolWriterOver, NoStarsRemoveTheFile) {
  const ScratchDir scratch;
  writeStars(scratch.write("p.sol", "[ 1 ]\n"), Array<Star<TypeParam>>());
  EXPECT_TRUE(scratch.names().empty());
}

TYPED_TEST(SolWriterOver, NoStarsCreateNoFile) {
  const ScratchDir scratch;
  writeStars(scratch.file("p.sol"), Array<Star<TypeParam>>());
  EXPECT_TRUE(scratch.names().empty());
}

TYPED_TEST(SolWriterOver, SeventeenDigitIntegersAreWritten) {
  const ScratchDir scratch;
  const auto stars = this->only(Star<TypeParam>{TypeParam(99'999'999'999'999'999L)});
  writeStars(scratch.file("p.sol"), stars);
  EXPECT_EQ(scratch.read("p.sol"), "[ 99999999999999999 ] | 0 | [ ] | 0 | -1 | \n");
}

/// A file that must not be touched.
class LossyWrite : public testing::Test {
 protected:
  void expectLoss(long double component) {
    Array<Star<long double>> stars(2);
    stars[1] = Star<long double>{1.0L};
    stars[2] = Star<long double>{component};
    try {
      writeStars(path_, stars);
      FAIL() << "written: " << scratch_.read("p.sol");
    } catch (const PrecisionException& exception) {
      EXPECT_EQ(exception.message(), "Precision lost during write");
    }
    EXPECT_EQ(scratch_.read("p.sol"), "old\n");
    EXPECT_EQ(scratch_.names(), std::vector<std::string>{"p.sol"});
  }

 private:
  ScratchDir scratch_;
  std::string path_ = scratch_.write("p.sol", "old\n");
};

TEST_F(LossyWrite, EighteenDigitIntegerIsNotWritten) {
  expectLoss(123456789012345678.0L);
}

TEST_F(LossyWrite, NegativeEighteenDigitIntegerIsNotWritten) {
  expectLoss(-999999999999999999.0L);
}

TEST_F(LossyWrite, EighteenDigitDecimalIsNotWritten) {
  expectLoss(0.123456789012345678L);
}

TEST(WriteStars, EighteenDigitsThatEndInAZeroAreWritten) {
  const ScratchDir scratch;
  Array<Star<long double>> stars(1);
  stars[1] = Star<long double>{123456789012345670.0L, 1e17L};
  writeStars(scratch.file("p.sol"), stars);
  EXPECT_EQ(scratch.read("p.sol"), "[ 1.2345678901234567e+17 1e+17 ] | 0 | [ ] | 0 | -1 | \n");
}

TEST(WriteStars, NormsMayLoseDigits) {
  const ScratchDir scratch;
  Array<Star<long double>> stars(1);
  stars[1] = Star<long double>{1.0L};
  stars[1].targetNorm = 123456789012345678.0L;
  writeStars(scratch.file("p.sol"), stars);
  EXPECT_EQ(scratch.read("p.sol"), "[ 1 ] | 1.23457e+17 | [ ] | 0 | -1 | \n");
}

TEST(WriteStars, EighteenDigitRationalsAreWritten) {
  const ScratchDir scratch;
  Array<Star<QQ>> stars(1);
  stars[1] = Star<QQ>{q("123456789012345678")};
  writeStars(scratch.file("p.sol"), stars);
  EXPECT_EQ(scratch.read("p.sol"), "[ 123456789012345678 ] | 0 | [ ] | 0 | -1 | \n");
}

}  // namespace
}  // namespace starsift

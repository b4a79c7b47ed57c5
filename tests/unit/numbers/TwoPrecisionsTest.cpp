// The failover on two small forms: one holds a digit, the other any number.
#include "numbers/TwoPrecisions.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

struct Large;

struct Digit {
  int value = 0;
  int copies = 0;
  bool isReleased = false;
  void convertFrom(const Digit& other) {
    value = other.value;
    ++copies;
  }
  inline void convertFrom(const Large& other);
  void release() { isReleased = true; }
};

struct Large {
  int value = 0;
  bool isReleased = false;
  void convertFrom(const Digit& other) { value = other.value; }
  void release() { isReleased = true; }
};

void Digit::convertFrom(const Large& other) {
  value = -1;
  if (other.value > 9) throw PrecisionException("more than a digit");
  value = other.value;
}

/// Adds to the value; a digit that overflows is lost.
struct Addition {
  int operator()(Digit& form) const {
    form.value += summand;
    if (form.value > 9) throw PrecisionException("overflow");
    return form.value;
  }
  int operator()(Large& form) const { return form.value += summand; }
  int summand;
};

class TwoPrecisionsTest : public testing::Test {
 protected:
  TwoPrecisions<Digit, Large> number;
  const TwoPrecisions<Digit, Large>& seen = number;
};

TEST_F(TwoPrecisionsTest, StepStaysOnTheStandardFormWhileThatHoldsTheResult) {
  EXPECT_EQ(number.runStep(Addition{4}), 4);
  EXPECT_EQ(number.runStep(Addition{5}), 9);
  EXPECT_FALSE(number.usesExact());
}

TEST_F(TwoPrecisionsTest, LostStepIsRepeatedOnTheStateFromBefore) {
  number.runStep(Addition{4});
  EXPECT_EQ(number.runStep(Addition{8}), 12);
  EXPECT_TRUE(number.usesExact());
  EXPECT_TRUE(seen.standard().isReleased);
}

TEST_F(TwoPrecisionsTest, StateComesBackOnceItFits) {
  number.runStep(Addition{12});
  EXPECT_EQ(number.runStep(Addition{-5}), 7);
  EXPECT_FALSE(number.usesExact());
  EXPECT_EQ(seen.standard().value, 7);
  EXPECT_TRUE(seen.exact().isReleased);
}

TEST_F(TwoPrecisionsTest, StepThatLeavesTheStateTakesNoSnapshot) {
  number.runStep([](auto&) {}, OnFailure::unchanged);
  number.runStep([](auto& form) { form.value = 3; });
  EXPECT_EQ(number.runStep(
                [](auto& form) {
                  if constexpr (std::is_same_v<decltype(form), Digit&>)
                    throw PrecisionException("lost");
                  return form.value;
                },
                OnFailure::unchanged),
            3);
}

TEST_F(TwoPrecisionsTest, OtherExceptionsPassAndLeaveWhatTheStepDid) {
  EXPECT_THROW(number.runStep([](auto& form) {
    form.value = 8;
    throw std::runtime_error("broken");
  }),
               std::runtime_error);
  EXPECT_FALSE(number.usesExact());
  EXPECT_EQ(seen.standard().value, 8);
}

TEST_F(TwoPrecisionsTest, WayBackThatLosesDigitsLeavesTheExactForm) {
  number.useExtended();
  number.exact().value = 10;
  EXPECT_THROW(number.useStandard(), PrecisionException);
  EXPECT_TRUE(number.usesExact());
  number.tryStandard();
  EXPECT_TRUE(number.usesExact());
  EXPECT_EQ(number.exact().value, 10);
}

TEST_F(TwoPrecisionsTest, LiveFormIsTheOneThatIsUsed) {
  EXPECT_TRUE(number.withLive([](auto& form) { return std::is_same_v<decltype(form), Digit&>; }));
  number.useExtended();
  EXPECT_TRUE(
      seen.withLive([](auto& form) { return std::is_same_v<decltype(form), const Large&>; }));
  number.withBoth([](auto& form) { form.value = 6; });
  EXPECT_EQ(seen.standard().value, 6);
  EXPECT_EQ(seen.exact().value, 6);
}

TEST_F(TwoPrecisionsTest, ChangeOfTheOtherFormIsFatal) {
  EXPECT_FAILS_WITH(number.exact().value = 1, "The exact precision is not in use");
  number.useExtended();
  EXPECT_FAILS_WITH(number.standard().value = 1, "The standard precision is not in use");
}

/// Notes what it is told.
struct NotedSwitches {
  static std::string& notes() {
    static std::string text;
    return text;
  }
  static void toExact(const Digit& form) { notes() += "exact " + std::to_string(form.value) + ";"; }
  static void toStandard(const Digit& form) {
    notes() += "standard " + std::to_string(form.value) + ";";
  }
  static void stepFailed(const Large& /*form*/) { notes() += "failed;"; }
};

TEST(TwoPrecisions, SwitchesAreReportedInTheirOrder) {
  TwoPrecisions<Digit, Large, NotedSwitches> number;
  number.runStep(Addition{12});
  number.runStep(Addition{-9});
  EXPECT_EQ(NotedSwitches::notes(), "failed;exact 0;standard 3;");
}

}  // namespace
}  // namespace starsift

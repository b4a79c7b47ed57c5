#include "system/Exceptions.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace starsift {
namespace {

/// The text that `Exception` carries when it is made with `message`.
template <class Exception>
std::string textWith(const std::string& message) {
  const Exception exception(message);
  EXPECT_EQ(exception.message(), exception.what());
  return exception.message();
}

TEST(Exceptions, KeepTheirFixedTextsForAnEmptyMessage) {
  EXPECT_EQ(textWith<GeneralException>(""), "");
  EXPECT_EQ(textWith<PrecisionException>(""), "Precision exception");
  EXPECT_EQ(textWith<DecimalPrecisionException>(""), "DecimalPrecision exception");
  EXPECT_EQ(textWith<PreCommaPrecisionException>(""), "PreCommaPrecision exception");
  EXPECT_EQ(textWith<PostCommaPrecisionException>(""), "PostCommaPrecision exception");
  EXPECT_EQ(textWith<FatalPrecisionException>(""), "FatalPrecisionException exception");
  EXPECT_EQ(textWith<ReadException>(""), "Read exception");
  EXPECT_EQ(textWith<ModuloException>(""), "Modulo exception");
  EXPECT_EQ(textWith<RestartException>(""), "Restart exception");
  EXPECT_EQ(textWith<DependencyException>(""), "Dependency exception");
}

TEST(Exceptions, ReplaceTheFixedTextByTheMessage) {
  EXPECT_EQ(textWith<GeneralException>("x"), "x");
  EXPECT_EQ(textWith<PrecisionException>("x"), "x");
  EXPECT_EQ(textWith<DecimalPrecisionException>("x"), "x");
  EXPECT_EQ(textWith<PreCommaPrecisionException>("x"), "x");
  EXPECT_EQ(textWith<PostCommaPrecisionException>("x"), "x");
  EXPECT_EQ(textWith<ReadException>("x"), "x");
  EXPECT_EQ(textWith<ModuloException>("x"), "x");
  EXPECT_EQ(textWith<RestartException>("x"), "x");
  EXPECT_EQ(textWith<DependencyException>("x"), "x");
}

TEST(FatalPrecisionException, PutsTheMessageBehindItsOwnWords) {
  EXPECT_EQ(textWith<FatalPrecisionException>("x"), "FatalPrecisionException exception: x");
}

TEST(FatalPrecisionException, PutsABlankMessageBehindItsOwnWordsToo) {
  EXPECT_EQ(textWith<FatalPrecisionException>(" "), "FatalPrecisionException exception:  ");
}

TEST(Exceptions, TakeABlankMessageForAMessage) {
  EXPECT_EQ(textWith<PrecisionException>(" "), " ");
}

TEST(Exceptions, OwnACopyOfTheMessage) {
  std::string message = "a message that is too long to stand in the string object itself";
  const ReadException exception(message);
  message[0] = 'X';
  EXPECT_EQ(exception.message()[0], 'a');
}

template <class Exception>
bool caughtAsPrecision() {
  try {
    throw Exception("x");
  } catch (const PrecisionException&) {
    return true;
  } catch (const GeneralException&) {
    return false;
  }
}

TEST(PrecisionException, CatchesItsFourDescendants) {
  EXPECT_TRUE(caughtAsPrecision<PrecisionException>());
  EXPECT_TRUE(caughtAsPrecision<DecimalPrecisionException>());
  EXPECT_TRUE(caughtAsPrecision<PreCommaPrecisionException>());
  EXPECT_TRUE(caughtAsPrecision<PostCommaPrecisionException>());
  EXPECT_TRUE(caughtAsPrecision<FatalPrecisionException>());
}

TEST(PrecisionException, CatchesNoneOfTheOthers) {
  EXPECT_FALSE(caughtAsPrecision<GeneralException>());
  EXPECT_FALSE(caughtAsPrecision<ReadException>());
  EXPECT_FALSE(caughtAsPrecision<ModuloException>());
  EXPECT_FALSE(caughtAsPrecision<RestartException>());
  EXPECT_FALSE(caughtAsPrecision<DependencyException>());
}

TEST(ReadException, CatchesNoPrecisionLoss) {
  EXPECT_FALSE((std::is_base_of_v<ReadException, PrecisionException>));
  EXPECT_FALSE((std::is_base_of_v<ReadException, FatalPrecisionException>));
}

TEST(Exceptions, AreAllStandardExceptions) {
  try {
    throw RestartException("Lattice was regenerated");
  } catch (const std::exception& exception) {
    EXPECT_STREQ(exception.what(), "Lattice was regenerated");
  }
}

}  // namespace
}  // namespace starsift

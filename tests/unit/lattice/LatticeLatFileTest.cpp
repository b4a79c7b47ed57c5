// The lattice file of a lattice.
#include <gtest/gtest.h>

#include <ctime>
#include <fstream>

#include "core/VectorText.h"
#include "support/fixtures/CheckVectors.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/RowsText.h"
#include "support/fixtures/ScratchDir.h"
#include "text/InputText.h"

namespace starsift {
namespace {

using test::LatticeStage;
using test::rowsText;
using test::ScratchDir;
using test::textOf;

// x + y largest, from 4 on, x from 2 to 7, y from 0 to 5.
constexpr const char* climb =
    "[ inf ] = [ 4 ] [ [ 1 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 2 0 ] [ 7 5 ]";

template <class T>
class LatticeLatFileOver : public test::LatticeOfProblem<T> {
 protected:
  LatticeLatFileOver() {
    this->normalise(climb);
    this->live.generateLattice(LatticeKind::full);
    this->live.latFile = scratch.file("p.lat");
    this->live.run.outputSwitch = true;
  }

  std::string written() {
    this->live.writeLatFile();
    return scratch.read("p.lat");
  }

  ScratchDir scratch;
};
TYPED_TEST_SUITE(LatticeLatFileOver, test::LatticeNumbers);

TYPED_TEST(LatticeLatFileOver, ShowsTheLatticeInRawCoordinates) {
  auto& lattice = this->live;
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  const std::string rows = textOf(lattice.basis.B());
  lattice.setScale(2, TypeParam(7));
  EXPECT_EQ(this->written(),
            rows + "\n\n" + textOf(lattice.frame.l) + "\n" + textOf(lattice.frame.r) + "\n\n" +
                textOf(lattice.frame.c) + "\n" + textOf(lattice.frame.rangeMultiple) +
                "\n\n[ 0 0 ]\n[ 5 5 ]\n\n1\n[ " + textOf(lattice.ltu) + " " + textOf(lattice.rtu) +
                " ]\n\n0\n\n"
                "// B -- l, r -- c, R -- lx, rx -- tuse, lrtu -- rtime\n");
}

TYPED_TEST(LatticeLatFileOver, ReadsTheSameWithAndWithoutItsLegend) {
  const std::string whole = this->written();
  const std::string values = whole.substr(0, whole.find("//"));
  for (const std::string& text : {whole, values}) {
    std::istringstream stream(text);
    Matrix<TypeParam> basis;
    Vector<TypeParam> l;
    Vector<TypeParam> r;
    stream >> basis >> l >> r;
    EXPECT_EQ(rowsText(basis), rowsText(this->live.basis.B()));
    EXPECT_EQ(textOf(l), textOf(this->live.frame.l));
    EXPECT_EQ(textOf(r), textOf(this->live.frame.r));
  }
}

/// The text without comments, from two slashes to the end of the line.
std::string withoutComments(std::string text) {
  for (std::size_t at = text.find("//"); at != std::string::npos; at = text.find("//"))
    text.erase(at, text.find('\n', at) - at);
  return text;
}

TYPED_TEST(LatticeLatFileOver, HoldsAllValuesInTheirOrder) {
  auto& lattice = this->live;
  lattice.run.runVariables[MainMutexVariable::startTime].set(
      std::to_string(std::time(nullptr) - 1000));
  lattice.lx[2] = TypeParam(-7);
  std::istringstream stream(withoutComments(this->written()));
  Matrix<TypeParam> basis;
  Vector<TypeParam> l;
  Vector<TypeParam> r;
  Vector<TypeParam> c;
  TypeParam range;
  Vector<TypeParam> lx;
  Vector<TypeParam> rx;
  int hasTarget = 0;
  Vector<TypeParam> targetRange;
  long seconds = 0;
  stream >> basis >> l >> r >> c >> range >> lx >> rx >> hasTarget >> targetRange >> seconds;
  ASSERT_TRUE(stream);
  EXPECT_EQ(rowsText(basis), rowsText(lattice.basis.B()));
  EXPECT_EQ(textOf(l), textOf(lattice.frame.l));
  EXPECT_EQ(textOf(r), textOf(lattice.frame.r));
  EXPECT_EQ(textOf(c), textOf(lattice.frame.c));
  EXPECT_EQ(range, lattice.frame.rangeMultiple);
  EXPECT_EQ(textOf(lx), "[ 0 -7 ]");
  EXPECT_EQ(textOf(rx), "[ 5 5 ]");
  EXPECT_EQ(hasTarget, 1);
  EXPECT_EQ(textOf(targetRange), textOf(Vector<TypeParam>{lattice.ltu, lattice.rtu}));
  EXPECT_GE(seconds, 1000);
  EXPECT_LE(seconds, 1060);
  std::string rest;
  EXPECT_FALSE(stream >> rest) << rest;
}

TYPED_TEST(LatticeLatFileOver, TranslationIsTakenBack) {
  auto& lattice = this->live;
  const std::string before = this->written();
  const Matrix<TypeParam> raw(lattice.basis.B());
  this->setSilently(lattice.params.translate, true);
  lattice.basis.translation[1] = TypeParam(3);
  lattice.basis.translation[2] = TypeParam(-4);
  lattice.basis.replace(lattice.forwardMapAll(raw));
  ASSERT_FALSE(identical(lattice.basis.B(), raw));
  EXPECT_EQ(this->written(), before);
}

TYPED_TEST(LatticeLatFileOver, TellsTheTimeOfTheRun) {
  this->live.run.runVariables[MainMutexVariable::startTime].set(
      std::to_string(std::time(nullptr) - 1000));
  const std::string text = this->written();
  const std::string end = text.substr(text.find(" ]\n\n10") + 4);
  const int seconds = std::stoi(end);
  EXPECT_GE(seconds, 1000);
  EXPECT_LE(seconds, 1060);
}

TYPED_TEST(LatticeLatFileOver, IsNotWrittenWhileTheOutputIsOff) {
  this->live.run.outputSwitch = false;
  this->live.writeLatFile();
  EXPECT_TRUE(this->scratch.names().empty());
  this->live.latFile = "";
  testing::internal::CaptureStderr();
  this->live.writeLatFile();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TYPED_TEST(LatticeLatFileOver, MissingNameIsReportedAndTheRunGoesOn) {
  this->live.latFile = "";
  testing::internal::CaptureStderr();
  this->live.writeLatFile();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "\n*** latFile is not set - lattice write not possible\n");
  EXPECT_NE(lastOutputTime(), 0);
}

}  // namespace
}  // namespace starsift

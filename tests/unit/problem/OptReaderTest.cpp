#include "problem/OptReader.h"

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/OptText.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using test::OptText;
using test::problemFrom;
using test::q;

const QQ inf = QQ::infinity();

TEST(ParseOpt, ItemsStandWhereTheyBelong) {
  const Vanu<QQ> problem = problemFrom(
      "// maximise x1 + 2 x2\n[ inf ]\n[ [ 1 2 ] ]\n[ [ 3 1/2 ] ]  [ 7 ]  [ ]\n"
      "[ [ 1 -1 ] ]   [ -inf ]  [ 2 ]\n[ 0 1 ]  [ -3 0 ]  [ 5 6 ]\n");
  EXPECT_TRUE(identical(problem.dt, Vector<QQ>{inf}));
  EXPECT_TRUE(identical(problem.At[1], Vector<QQ>{1, 2}));
  EXPECT_TRUE(identical(problem.Ag[1], Vector<QQ>{3, q("1/2")}));
  EXPECT_TRUE(identical(problem.bg, Vector<QQ>{7}));
  EXPECT_FALSE(problem.qg.isSet());
  EXPECT_TRUE(identical(problem.Au[1], Vector<QQ>{1, -1}));
  EXPECT_TRUE(identical(problem.lu, Vector<QQ>{-inf}));
  EXPECT_TRUE(identical(problem.ru, Vector<QQ>{2}));
  EXPECT_TRUE(identical(problem.dx, Vector<QQ>{0, 1}));
  EXPECT_TRUE(identical(problem.lx, Vector<QQ>{-3, 0}));
  EXPECT_TRUE(identical(problem.rx, Vector<QQ>{5, 6}));
}

TEST(ParseOpt, EveryKindOfRowMayComeInNumbers) {
  const Vanu<QQ> problem = problemFrom(OptText{.dt = "[ inf -inf 3 ]",
                                               .At = "[ [ 1 2 ] [ 3 4 ] [ 5 6 ] ]",
                                               .Ag = "[ [ 1 1 ] [ 2 2 ] ]",
                                               .bg = "[ 7 8 ]",
                                               .qg = "[ 0 3/2 ]"}
                                           .text());
  EXPECT_EQ(problem.At.rowCount(), 3);
  EXPECT_EQ(problem.At[3][2], QQ(6));
  EXPECT_EQ(problem.Ag.rowCount(), 2);
  EXPECT_TRUE(identical(problem.qg, Vector<QQ>{0, q("3/2")}));
}

TEST(ParseOpt, ThresholdsAreACopyOfTheGoalsWithoutTheSign) {
  const Vanu<QQ> problem =
      problemFrom(OptText{.dt = "[ inf -inf 3 ]", .At = "[ [ 1 2 ] [ 3 4 ] [ 5 6 ] ]"}.text());
  EXPECT_TRUE(identical(problem.kt, Vector<QQ>{inf, -inf, 3}));
}

TEST(ParseOpt, ThresholdsStandBehindTheSign) {
  EXPECT_TRUE(identical(problemFrom(OptText{.kt = "= [ 4/3 ]"}.text()).kt, Vector<QQ>{q("4/3")}));
}

TEST(ParseOpt, ThresholdsMayBeInfinite) {
  EXPECT_TRUE(identical(problemFrom(OptText{.kt = "=[-inf]"}.text()).kt, Vector<QQ>{-inf}));
}

TEST(ParseOpt, CommentBeforeTheSignIsSkipped) {
  const std::string kt = "/* a */ // b\n = // c\n [ 5 ]";
  EXPECT_TRUE(identical(problemFrom(OptText{.kt = kt}.text()).kt, Vector<QQ>{5}));
}

TEST(ParseOpt, ProblemWithoutTargetsTakesItsColumnsFromInequations) {
  const Vanu<QQ> problem =
      problemFrom(OptText{.dt = "[ ]", .At = "[ ]", .Ag = "[ ]", .bg = "[ ]"}.text());
  EXPECT_EQ(problem.rx.dimension(), 2);
  EXPECT_EQ(problem.At.rowCount(), 0);
}

TEST(ParseOpt, ProblemOfEquationsOnlyTakesItsColumnsFromThem) {
  const Vanu<QQ> problem =
      problemFrom(OptText{.dt = "[ ]", .At = "[ ]", .Au = "[ ]", .lu = "[ ]", .ru = "[ ]"}.text());
  EXPECT_EQ(problem.Ag.columnCount(), 2);
  EXPECT_EQ(problem.rx.dimension(), 2);
}

TEST(ParseOpt, EqualBoundsOfAnInequationAreAccepted) {
  EXPECT_EQ(problemFrom(OptText{.lu = "[ 2 ]"}.text()).lu[1], QQ(2));
}

TEST(ParseOpt, EqualBoundsOfAVariableAreAccepted) {
  EXPECT_EQ(problemFrom(OptText{.lx = "[ 0 5 ]"}.text()).fd[2], FreedomDegree::bounded);
}

TEST(ParseOpt, VariableBetweenInfinityAndInfinityIsAccepted) {
  const Vanu<QQ> problem = problemFrom(OptText{.lx = "[ 0 inf ]", .rx = "[ 5 inf ]"}.text());
  EXPECT_EQ(problem.fd[2], FreedomDegree::rightFree);
}

TEST(ParseOpt, KindsFollowTheBounds) {
  const Vanu<QQ> problem = problemFrom(
      "[ ] [ ] [ [ 1 1 1 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] [ 0 0 0 0 ] [ 0 -inf 0 -inf ] [ 5 5 inf inf "
      "]");
  ASSERT_EQ(problem.fd.dimension(), 4);
  EXPECT_EQ(problem.fd[1], FreedomDegree::bounded);
  EXPECT_EQ(problem.fd[2], FreedomDegree::leftFree);
  EXPECT_EQ(problem.fd[3], FreedomDegree::rightFree);
  EXPECT_EQ(problem.fd[4], FreedomDegree::free);
}

TEST(ParseOpt, DecimalPlacesAreNotLookedAt) {
  const Vanu<QQ> problem = problemFrom(OptText{.dx = "[ -inf 1/3 ]"}.text());
  EXPECT_TRUE(identical(problem.dx, Vector<QQ>{-inf, q("1/3")}));
}

TEST(ParseOpt, ModulusOfZeroIsAccepted) {
  EXPECT_EQ(problemFrom(OptText{.qg = "[ 0 ]"}.text()).qg[1], QQ(0));
}

TEST(ParseOpt, ShortLastRowIsPaddedWithZeros) {
  const Vanu<QQ> problem = problemFrom(OptText{.Ag = "[ [ 3 4 ] [ 5 ] ]", .bg = "[ 1 2 ]"}.text());
  EXPECT_TRUE(identical(problem.Ag[2], Vector<QQ>{5, 0}));
}

TEST(ParseOpt, TextBehindTheLastItemIsNotLookedAt) {
  EXPECT_EQ(problemFrom(OptText().text() + "[ x y z").rx.dimension(), 2);
}

TEST(ParseOpt, ExponentIsNotPartOfANumber) {
  EXPECT_FAILS_WITH(problemFrom(OptText{.bg = "[ 1e5 ]"}.text()), "QQ: parse error1");
}

TEST(ParseOpt, UnclosedCommentIsFatal) {
  EXPECT_FAILS_WITH(problemFrom(OptText{.rx = "[ 5 /* 5 ]"}.text()), "comment is not closed");
}

TEST(ParseOpt, ForgottenRowBracketIsFatal) {
  EXPECT_FAILS_WITH(problemFrom(OptText{.At = "[ 1 2 ]"}.text()), "Matrix: bad input");
}

TEST(ParseOpt, LongRowIsFatal) {
  EXPECT_FAILS_WITH(problemFrom(OptText{.Ag = "[ [ 1 2 ] [ 3 4 5 ] ]"}.text()),
                    "Matrix row dimension mismatch");
}

TEST(ParseOpt, AbsentModuliTakeTheInequationsForThem) {
  EXPECT_FAILS_WITH(problemFrom(OptText{.qg = ""}.text()), "QQ: parse error1");
}

TEST(ParseOpt, ThirdStateFlagIsCleared) {
  Vanu<QQ> problem;
  problem.trackingRestarted = true;
  const std::string text = OptText().text();
  TextCursor source(text);
  parseOpt(source, problem);
  EXPECT_FALSE(problem.trackingRestarted);
}

TEST(ReadOpt, ReplacesEverythingButThePaths) {
  const test::ScratchDir scratch;
  Vanu<QQ> problem = problemFrom(OptText{.kt = "= [ 1 ]", .qg = "[ 2 ]"}.text());
  problem.optFile = scratch.write("p.opt", OptText().text());
  problem.solFile = "p.sol";
  problem.slackCount = 3;
  problem.deviationCount = 4;
  problem.lifted = true;
  readOpt(problem);
  EXPECT_EQ(problem.optFile, scratch.file("p.opt"));
  EXPECT_EQ(problem.solFile, "p.sol");
  EXPECT_TRUE(identical(problem.kt, Vector<QQ>{inf}));
  EXPECT_FALSE(problem.qg.isSet());
  EXPECT_EQ(problem.slackCount, 0);
  EXPECT_EQ(problem.deviationCount, 0);
  EXPECT_FALSE(problem.lifted);
}

TEST(ReadOpt, NotesWhetherAllGoalsAreFinite) {
  const test::ScratchDir scratch;
  Vanu<QQ> problem;
  problem.optFile = scratch.write("p.opt", OptText{.dt = "[ 3 ]"}.text());
  readOpt(problem);
  EXPECT_TRUE(problem.fixedTargets);
  problem.optFile = scratch.write("q.opt", OptText().text());
  readOpt(problem);
  EXPECT_FALSE(problem.fixedTargets);
}

TEST(ReadOpt, NamesTheFileThatIsMissing) {
  const test::ScratchDir scratch;
  Vanu<QQ> problem;
  problem.optFile = scratch.file("missing.opt");
  EXPECT_FAILS_WITH(readOpt(problem), "Could not read opt file: " + problem.optFile);
}

TEST(ReadOpt, FileWhoseReadingBreaksOffIsNoProblem) {
  Vanu<QQ> problem;
  problem.optFile = "/proc/self/mem";
  EXPECT_FAILS_WITH(readOpt(problem), "Could not read opt file: /proc/self/mem");
}

TEST(ReadOpt, DirectoryIsNoProblem) {
  const test::ScratchDir scratch;
  Vanu<QQ> problem;
  problem.optFile = scratch.path();
  EXPECT_FAILS_WITH(readOpt(problem), "Could not read opt file: " + problem.optFile);
}

}  // namespace
}  // namespace starsift

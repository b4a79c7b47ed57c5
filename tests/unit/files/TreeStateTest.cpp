#include "files/TreeState.h"

#include <gtest/gtest.h>

#include "files/FileNames.h"
#include "problem/OptReader.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

TreeState example() {
  TreeState state;
  state.version = "2.4.2";
  state.problem = "8c5e1a0c7f1f3c9e";
  state.goal = "best";
  state.part = 3;
  state.parts = 8;
  state.known = QQ(1, 2);
  state.tree = "01d3a5f2b7c96e48";
  state.done = {true, true, false, true, false, false, true, true, true};
  state.solutions = 4;
  state.nodes = 1048576;
  state.milliseconds = 3120;
  state.best = QQ(-303, 2);
  return state;
}

std::string problemDigestOf(const std::string& text) {
  TextCursor source(text);
  Vanu<QQ> problem;
  parseOpt(source, problem);
  return problemDigest(problem);
}

TEST(TreeState, HasALineForEachField) {
  EXPECT_EQ(
      stateText(example()),
      "starseek state\nversion 2.4.2\nproblem 8c5e1a0c7f1f3c9e\ngoal best\npart 3/8\n"
      "known 1/2\ntree 01d3a5f2b7c96e48\nsubtrees 9\ndone 0-1 3 6-8\nsolutions 4\nnodes 1048576\n"
      "milliseconds 3120\nbest -303/2\nbound none\nend open\nsum 9badd031ce8d359b\n");
}

TEST(TreeState, ComesBackFromItsFile) {
  const test::ScratchDir folder;
  const std::string path = folder.file("p.state");
  for (const bool isEnough : {false, true}) {
    TreeState state = example();
    state.isEnough = isEnough;
    ASSERT_TRUE(writeTreeState(path, state));
    const std::optional<TreeState> read = readTreeState(path, "2.4.2");
    ASSERT_TRUE(read);
    EXPECT_EQ(stateText(*read), stateText(state));
    EXPECT_EQ(read->done, state.done);
    EXPECT_EQ(read->best, state.best);
    EXPECT_EQ(read->known, state.known);
    EXPECT_EQ(read->isEnough, isEnough);
  }
}

TEST(TreeState, IsNothingWithoutAFile) {
  const test::ScratchDir folder;
  EXPECT_FALSE(readTreeState(folder.file("p.state"), "2.4.2"));
}

TEST(TreeState, OfAnotherVersionIsFatal) {
  const test::ScratchDir folder;
  const std::string path = folder.file("p.state");
  ASSERT_TRUE(writeTreeState(path, example()));
  EXPECT_FAILS_WITH(readTreeState(path, "2.4.3"),
                    "File " + path + " is of version 2.4.2, not of 2.4.3: remove it to begin anew");
}

TEST(TreeState, IsCompleteIfAllSubtreesAreDone) {
  TreeState state = example();
  EXPECT_EQ(state.doneCount(), 6);
  EXPECT_FALSE(state.isComplete());
  state.done.assign(9, true);
  EXPECT_TRUE(state.isComplete());
  EXPECT_NE(stateText(state).find("\ndone 0-8\n"), std::string::npos);
  EXPECT_NE(stateText(state).find("\nend complete\n"), std::string::npos);
}

TEST(ProblemDigest, IsThatOfTheNumbersAlone) {
  const std::string digest = problemDigestOf(
      "[ inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]");
  EXPECT_EQ(digest, problemDigestOf("// a comment\n[ inf ] [ [ 1 2 ] ] [ [ 3 04 ] ] [ 10/2 ] [ ] "
                                    "[ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]"));
  for (const char* const other :
       {"[ -inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 3 ] ] [ [ 3 4 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 2 ] ] [ [ 3 5 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 6 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 5 ] [ 7 ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 5 ] [ ] [ [ 1 1 ] ] [ 0 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 1 0 ] [ 0 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 1 0 ] [ 9 9 ]",
        "[ inf ] [ [ 1 2 ] ] [ [ 3 4 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 8 ]"})
    EXPECT_NE(digest, problemDigestOf(other)) << other;
}

TEST(PartFileNames, AreThoseOfTheProblemWithThePart) {
  const FileNames names = partFileNames("dir.d/p.q.opt", 3, 8);
  EXPECT_EQ(names.optFile, "dir.d/p.q.opt");
  EXPECT_EQ(names.solFile, "dir.d/p.q.part-3-of-8.sol");
  EXPECT_EQ(names.stateFile, "dir.d/p.q.part-3-of-8.state");
  EXPECT_EQ(partFileNames("dir.d/p.opt", 1, 1).solFile, "dir.d/p.sol");
  EXPECT_EQ(partFileNames("dir.d/p.opt", 1, 1).stateFile, "dir.d/p.state");
}

}  // namespace
}  // namespace starsift

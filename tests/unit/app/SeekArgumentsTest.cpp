#include "app/SeekArguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace starsift {
namespace {

using testing::ElementsAre;

SeekArguments split(std::vector<std::string> texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size());
  for (std::string& text : texts) pointers.push_back(text.data());
  return splitArguments(pointers);
}

TEST(SeekArguments, AreParametersAndAFileInAnyOrder) {
  const SeekArguments given = split({"--sol=2", "dir/p.opt", "--verb=1"});
  EXPECT_THAT(given.parameters, ElementsAre("--sol=2", "--verb=1"));
  EXPECT_EQ(given.optFile, "dir/p.opt");
}

TEST(SeekArguments, HaveNoFileWithoutAny) {
  EXPECT_EQ(split({}).optFile, "");
  EXPECT_EQ(split({"--sol=2"}).optFile, "");
}

TEST(SeekArguments, HaveNoFileWithAnotherEnding) {
  EXPECT_EQ(split({"p.sol"}).optFile, "");
  EXPECT_EQ(split({"p.OPT"}).optFile, "");
  EXPECT_EQ(split({"dir.opt/p"}).optFile, "");
  EXPECT_EQ(split({""}).optFile, "");
}

TEST(SeekArguments, HaveNoFileWhereTwoAreGiven) {
  EXPECT_EQ(split({"p.opt", "q.opt"}).optFile, "");
}

TEST(SeekArguments, TakeWhatStartsWithADashForAParameter) {
  const SeekArguments given = split({"-p.opt"});
  EXPECT_THAT(given.parameters, ElementsAre("-p.opt"));
  EXPECT_EQ(given.optFile, "");
}

}  // namespace
}  // namespace starsift

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

TEST(SeekArguments, HaveOptionsThatAreNoParameters) {
  const SeekArguments given = split({"--prove", "--count", "--json", "-h", "--version", "p.opt"});
  EXPECT_TRUE(given.parameters.empty());
  EXPECT_EQ(given.options.prove, true);
  EXPECT_TRUE(given.options.count);
  EXPECT_TRUE(given.options.json);
  EXPECT_TRUE(given.options.help);
  EXPECT_TRUE(given.options.version);
  EXPECT_EQ(given.optFile, "p.opt");
}

TEST(SeekArguments, TakeTheLastOfTwoValuesOfAnOption) {
  EXPECT_EQ(split({"--prove", "--prove=0"}).options.prove, false);
  EXPECT_EQ(split({"--prove=0", "--prove=1"}).options.prove, true);
  EXPECT_FALSE(split({"--count=0"}).options.count);
  EXPECT_FALSE(split({}).options.prove);
}

TEST(SeekArguments, TakeAnotherValueOfAnOptionForAParameter) {
  EXPECT_THAT(split({"--prove=2"}).parameters, ElementsAre("--prove=2"));
  EXPECT_THAT(split({"--help=1"}).parameters, ElementsAre("--help=1"));
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

#include "app/SeekArguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fixtures/ExpectFails.h"

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

TEST(SeekArguments, MayNameASeedThatIsNoParameter) {
  const SeekArguments given = split({"--seed=18446744073709551615", "p.opt", "--verb=1"});
  EXPECT_EQ(given.seed, 18446744073709551615U);
  EXPECT_THAT(given.parameters, ElementsAre("--verb=1"));
  EXPECT_FALSE(split({"p.opt"}).seed);
}

TEST(SeekArguments, TakeNoSeedButANaturalNumber) {
  for (const char* const text : {"", "-1", "+1", "1 ", "x", "1.5", "18446744073709551616"})
    EXPECT_FAILS_WITH(split({std::string("--seed=") + text}),
                      std::string("Malformed parameter: seed=") + text);
}

TEST(SeekArguments, MayNameThreads) {
  EXPECT_EQ(split({"--threads=1", "--threads=12", "p.opt"}).options.threads, 12U);
  EXPECT_FALSE(split({"p.opt"}).options.threads);
}

TEST(SeekArguments, TakeNoThreadsButAPositiveNumber) {
  for (const char* const text : {"", "0", "-1", "+1", "1 ", "x", "1.5", "1025", "4294967297"})
    EXPECT_FAILS_WITH(split({std::string("--threads=") + text}),
                      std::string("Malformed parameter: threads=") + text);
}

TEST(SeekArguments, SayWhetherANumberOfSolutionsIsGiven) {
  EXPECT_TRUE(split({"--sol=1", "p.opt"}).hasSol);
  EXPECT_FALSE(split({"--snorm=1", "p.opt"}).hasSol);
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

TEST(SeekArguments, MayNameAPart) {
  const SeekOptions options = split({"--part=3/8", "p.opt"}).options;
  ASSERT_TRUE(options.part);
  EXPECT_EQ(options.part->part, 3);
  EXPECT_EQ(options.part->parts, 8);
  EXPECT_EQ(split({"--part=1024/1024"}).options.part->part, 1024);
}

TEST(SeekArguments, TakeNoPartThatIsNone) {
  for (const char* const text :
       {"", "3", "/8", "3/", "0/8", "9/8", "-1/8", "3/8/1", "3 /8", "1/1025"})
    EXPECT_FAILS_WITH(split({std::string("--part=") + text}),
                      std::string("Malformed parameter: part=") + text);
}

TEST(SeekArguments, MakeNoPartWithoutACompleteSearch) {
  EXPECT_FAILS_WITH(split({"--part=1/2", "--join"}), "--part and --join exclude each other");
  EXPECT_FAILS_WITH(split({"--prove=0", "--part=1/2"}),
                    "--part is a part of a complete search, which --prove=0 forbids");
  EXPECT_TRUE(split({"--prove", "--part=1/2"}).options.part);
}

TEST(SeekArguments, NameTheProblemOfPartsWithOrWithoutItsEnding) {
  EXPECT_EQ(split({"--join", "dir/p"}).optFile, "dir/p.opt");
  EXPECT_EQ(split({"--join", "dir/p.opt"}).optFile, "dir/p.opt");
  EXPECT_EQ(split({"dir/p"}).optFile, "");
}

}  // namespace
}  // namespace starsift

#include "model/model_comparison.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

using tally_model::CRandom;
using tally_model::FirstDifference;
using tally_model::MakeRandomProject;
using tally_model::MakeRandomRequest;
using tally_model::RequestRandom;
using tally_model::SModelProject;

TEST(ModelComparison, EqualCellsDoNotDiffer) {
  EXPECT_EQ(FirstDifference({L"@A", L"1"}, {L"@A", L"1"}), "");
  EXPECT_EQ(FirstDifference({}, {}), "");
}

TEST(ModelComparison, NamesTheFirstCellThatDiffers) {
  EXPECT_EQ(FirstDifference({L"@A", L"1", L"2"}, {L"@A", L"3", L"4"}),
            "cell 1 differs (3 cells of the engine, 3 of the model)\n"
            "  engine: |@A| [[1]] |2|\n"
            "  model:  |@A| [[3]] |4|");
}

TEST(ModelComparison, AnArrayThatEndsEarlyDiffersAtItsEnd) {
  EXPECT_EQ(FirstDifference({L"@A"}, {L"@A", L""}),
            "cell 1 differs (1 cells of the engine, 2 of the model)\n"
            "  engine: |@A| (end)\n"
            "  model:  |@A| [[]]");
}

TEST(RandomProject, NumbersAreThoseOfSplitMix64) {
  CRandom random(0);
  EXPECT_EQ(random.Next(), 0xe220a8397b1dcdafU);
  EXPECT_EQ(random.Next(), 0x6e789e6aa1b965f4U);
}

TEST(RandomProject, HasFiveToEightyRowsInEverySet) {
  for (std::uint64_t seed = 1; seed <= 50; ++seed) {
    const tally_test::SProjectRecords records = MakeRandomProject(seed).records;
    for (const std::size_t rows :
         {records.hz.rows.size(), records.gl.rows.size(), records.cg.rows.size(),
          records.detail.rows.size(), records.pj.rows.size(), records.qdDe.rows.size()}) {
      EXPECT_GE(rows, 5U) << seed;
      EXPECT_LE(rows, 80U) << seed;
    }
  }
}

TEST(RandomProject, OneSeedGivesOneProjectAndOneRequest) {
  const SModelProject first = MakeRandomProject(7);
  const SModelProject second = MakeRandomProject(7);
  ASSERT_EQ(first.records.hz.rows.size(), second.records.hz.rows.size());
  for (std::size_t i = 0; i < first.records.hz.calItems.size(); ++i) {
    EXPECT_EQ(first.records.hz.calItems[i].name, second.records.hz.calItems[i].name);
  }
  CRandom firstRandom = RequestRandom(7);
  CRandom secondRandom = RequestRandom(7);
  EXPECT_EQ(Describe(MakeRandomRequest(firstRandom, first, Report::ReportXhlHz)),
            Describe(MakeRandomRequest(secondRandom, second, Report::ReportXhlHz)));
}

}  // namespace

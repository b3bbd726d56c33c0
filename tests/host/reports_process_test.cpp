// `tally reports`, run as a user runs it.
#include "host/program_process.h"

namespace {

class ReportsProcess : public tally_test::ProgramProcess {};

TEST_F(ReportsProcess, ListsEachReportWithItsDisciplines) {
  ExpectOutput({"reports", Project()},
               "consumption-summary  消耗量汇总表    给排水, 电气\n"
               "overview             工程量概览表    none\n"
               "over-height-summary  超高量汇总表    none\n"
               "fitting-summary      配件汇总表      none\n"
               "calculation-book     系统计算书      none\n"
               "paint-work           刷油工作量表    none\n"
               "duct-wall-thickness  风管壁厚表      none\n"
               "insulation           绝热保温表      none\n"
               "quota-summary        定额汇总表      none\n"
               "bill-quota-summary   清单定额汇总表  none\n"
               "bill-summary         清单汇总表      none\n");
}

TEST_F(ReportsProcess, KeepsADisciplineOnItsLine) {
  tally_test::RunSql(Project(),
                     "UPDATE spec SET name = 'a' || char(10) || 'b' || char(27) WHERE id = 1;"
                     "UPDATE spec SET name = '' WHERE id = 2");
  const std::string output = Run({"reports", Project()}).output;
  EXPECT_EQ(output.substr(0, output.find('\n')),
            "consumption-summary  消耗量汇总表    a; b␛, (no name)");
}

TEST_F(ReportsProcess, TellsWhatCannotBeRead) {
  ExpectFault({"reports", Name("none")}, "cannot open '" + Name("none") + "': no such file");
  tally_test::RunSql(Project(), "DROP TABLE pj_row");
  ExpectFault({"reports", Project()},
              "cannot read table pj_row of '" + Project() + "': no such table: pj_row");
}

}  // namespace

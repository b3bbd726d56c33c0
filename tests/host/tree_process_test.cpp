// `tally tree`, run as a user runs it.
#include "host/program_process.h"

namespace {

class TreeProcess : public tally_test::ProgramProcess {};

TEST_F(TreeProcess, PrintsTheFloorsByHeight) {
  ExpectOutput({"tree", Project(), "floors"}, "-1\n3,4\n");
}

TEST_F(TreeProcess, PrintsSystemCodesBelowTheirDisciplines) {
  tally_test::RunSql(Project(),
                     "INSERT INTO all_sys_code VALUES (2, 2, '电气', 'W', ''),"
                     " (3, 3, '给排水', 'J&JL&JL-2', ''), (4, 4, '给排水', 'J&JL&JL-1', ''),"
                     " (5, 5, '给排水', 'J&JL&JL-2', ''), (6, 6, '给排水', 'P&PL', '')");
  ExpectOutput({"tree", Project(), "sys-codes"},
               "电气\n"
               "  W\n"
               "    *W\n"
               "给排水\n"
               "  J\n"
               "    *J\n"
               "    JL\n"
               "      JL-2\n"
               "      JL-1\n"
               "  P\n"
               "    PL\n"
               "      *PL\n");
}

TEST_F(TreeProcess, PrintsComponentKindsBelowTheirCategories) {
  tally_test::RunSql(Project(),
                     "INSERT INTO all_small_index VALUES (3, 30, '给排水', '阀门', '阀门\\闸阀'),"
                     " (4, 11, '给排水', '管道', '管道\\排水管\\铸铁'),"
                     " (5, 12, '给排水', '', ''), (6, 13, '给排水', 'x', char(10))");
  ExpectOutput({"tree", Project(), "categories"},
               "电气\n"
               "  穿管引线\n"
               "    配管\n"
               "给排水\n"
               "  管道\n"
               "    给水管\n"
               "    排水管\\铸铁\n"
               "  阀门\n"
               "    闸阀\n"
               "  (no name)\n"
               "  (no name)\n");
}

TEST_F(TreeProcess, PrintsNothingOfAnEmptyTree) {
  tally_test::RunSql(Project(), "DELETE FROM all_floor");
  ExpectOutput({"tree", Project(), "floors"}, "");
}

TEST_F(TreeProcess, ListsTheTreesWhereThereIsNoSuchOne) {
  const std::string list = "; there is floors, sys-codes, categories";
  ExpectFault({"tree", Project(), "rooms"}, "no tree 'rooms'" + list);
  ExpectFault({"tree", Project(), ""}, "no tree ''" + list);
  ExpectFault({"tree", Project(), "sys-code"},
              "no tree 'sys-code'" + list + "; did you mean 'sys-codes'?");
  ExpectFault({"tree", Project(), "floors "},
              "no tree 'floors '" + list + "; did you mean 'floors'?");
}

TEST_F(TreeProcess, TellsWhatCannotBeRead) {
  ExpectFault({"tree", Name("none"), "floors"}, "cannot open '" + Name("none") + "': no such file");
  tally_test::RunSql(Project(),
                     "DROP TABLE all_floor; DROP TABLE all_sys_code; DROP TABLE all_small_index");
  const auto fault = [this](const std::string& table) {
    return "cannot read table " + table + " of '" + Project() + "': no such table: " + table;
  };
  ExpectFault({"tree", Project(), "floors"}, fault("all_floor"));
  ExpectFault({"tree", Project(), "sys-codes"}, fault("all_sys_code"));
  ExpectFault({"tree", Project(), "categories"}, fault("all_small_index"));
}

}  // namespace

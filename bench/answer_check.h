// Proves a report's answer before it is timed.
#ifndef TALLY_BENCH_ANSWER_CHECK_H_
#define TALLY_BENCH_ANSWER_CHECK_H_

#include <string>

#include "report_table.h"

/// Throws a std::runtime_error that tells what is wrong with the answer for a discipline of the
/// open project, which has data for it. Checked for every report at level 0 and the deepest level:
/// there are rows, they follow the report's layout, level 0 has no more of them than the deepest,
/// one floor or one system code has some but no more than all, and asking again and folding again
/// give the same cells. Where this file knows the report's sum, the quantities of its rows add up
/// to what a plain loop over the records finds. REQUIRES: each quantity is positive. Leaves the
/// report folded.
void CheckAnswer(const SBenchReport& report, const std::wstring& spec);

/// How many floors a floor text of a made project stands for.
double FloorsOf(const std::wstring& floorText);

#endif  // TALLY_BENCH_ANSWER_CHECK_H_

// The requests that the engine and other programs are compared by.
#ifndef TALLY_BENCH_PEER_CASES_H_
#define TALLY_BENCH_PEER_CASES_H_

#include <string>
#include <vector>

#include "report_model/report_types.h"

/// One request of the consumption summary of the open project, for one discipline or for each.
struct SPeerCase {
  std::string name;  ///< "<rows asked for>-<level>", such as "floor-deepest"
  std::vector<std::wstring> specs;
  Report::SNewCondition condition;
  int level = 0;
};

/// Every discipline, and the one with the most rows without a filter, on one floor and in one
/// system code; each at level 0 and the deepest level.
std::vector<SPeerCase> PeerCases();

/// The engine's answer, the rows of one discipline after the other.
Report::CellArray AnswerOf(const SPeerCase& peerCase);

/// Writes what a comparison must know to a JSON file: which discipline, floor and system code are
/// asked for, the main calculation item of each kind, and of each case the engine's rows, without
/// component references, and the number of records and their sum as a plain loop finds them.
void WriteAnswers(const std::string& file);

#endif  // TALLY_BENCH_PEER_CASES_H_

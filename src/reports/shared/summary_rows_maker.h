// Makes the rows that the tree keeps of the summaries.
#ifndef TALLY_REPORTS_SHARED_SUMMARY_ROWS_MAKER_H_
#define TALLY_REPORTS_SHARED_SUMMARY_ROWS_MAKER_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "report_model/report_data_node.h"
#include "reports/shared/first_sys_codes.h"
#include "reports/shared/summary_cells.h"
#include "reports/shared/summary_rows.h"

class CSummaryRows::CMaker {
 public:
  CMaker(CSummaryRows& to, EFirstSysCodes firstSysCodes, EChainMark mark, ELines lines)
      : to_(to), firstSysCodes_(firstSysCodes), mark_(mark), lines_(lines) {}

  /// `nodes` are those that hold the floors.
  void Make(const Report::NodeMap& nodes);

 private:
  struct SFloor {
    CReportFloor* node;
    std::uint32_t place;
  };
  // A node's part of the references, in the order of the walk.
  struct SPart {
    const IReportDataNode* node;
    std::size_t begin;
    std::size_t size;
    std::size_t next;  // place of the next node that does not lie below
  };
  // A system code whose parts are being laid out.
  struct SLevel {
    const CReportSysCode* node;
    Report::NodeMap::Place next;
    std::size_t place;
  };

  static std::uint32_t Narrow(std::size_t size);
  void AddFloor(const SFloor& place);
  void LayOut(const CReportSysCode& first);
  void Enter(const CReportSysCode& node);
  void AddSysCode(std::size_t place, std::size_t depth);
  void AddLines(std::size_t place);
  std::vector<std::size_t> SysCodesBelow(std::size_t place);
  std::uint32_t NumberOf(std::wstring_view name);
  void RankNames();
  void FileCodes();
  // A part of `to_.text_`.
  struct STextPart {
    std::uint32_t begin;
    std::uint32_t size;
  };
  template <class TAppend>
  STextPart Append(TAppend&& append);
  STextPart TitleOf(const CReportSysCode& node);
  SRow& AddRow(EKind kind, double quantity, const SPart& part, const STextPart& title);

  CSummaryRows& to_;
  const EFirstSysCodes firstSysCodes_;
  const EChainMark mark_;
  const ELines lines_;
  std::vector<SLevel> levels_;
  std::vector<SPart> parts_;  // of the first system code in hand
  std::vector<const CReportResult*> results_;
  std::size_t size_ = 0;                                          // of the references
  std::unordered_map<std::wstring_view, std::uint32_t> numbers_;  // of the names as they came
  // By name and remark, which stand once in the store.
  std::map<std::pair<const std::wstring*, const std::wstring*>, STextPart> titles_;
};

#endif  // TALLY_REPORTS_SHARED_SUMMARY_ROWS_MAKER_H_

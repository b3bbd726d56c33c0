// The lower half of the walk of the five summaries: floors, system codes, results.
#ifndef TALLY_REPORTS_SHARED_SUMMARY_WALK_H_
#define TALLY_REPORTS_SHARED_SUMMARY_WALK_H_

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "report_model/report_types.h"
#include "report_model/row_results.h"
#include "reports/shared/first_sys_codes.h"
#include "reports/shared/floor_blocks.h"
#include "reports/shared/level_test.h"
#include "reports/shared/picked_floor.h"
#include "reports/shared/section_choice.h"
#include "reports/shared/summary_cells.h"
#include "reports/shared/summary_rows.h"

/// The second cell of a floor row.
enum class EFloorCell { SelectedFloor, DrawingFloor };

/// The points below the attributes in which the summaries differ.
struct SSummaryShape {
  static constexpr int kNoLines = std::numeric_limits<int>::min();

  CLevelTest floorRow;
  int firstSysCodeLevel;     ///< level that opens the first system codes
  int lineLevel = kNoLines;  ///< the level, and no other, that shows lines
  EChainMark chainMark = EChainMark::Behind;
  EFirstSysCodes firstSysCodes = EFirstSysCodes::BySortNumber;
  EFloorCell floorCell = EFloorCell::SelectedFloor;
};

/// What a request asks for; `sysCodes` are the names allowed at each system code level.
struct SSummaryRequest {
  const std::wstring& spec;
  const Report::SNewCondition& condition;
  const std::vector<std::set<std::wstring, std::less<>>>& sysCodes;
  int level;
};

/// The node whose children are the floors that a walk adds.
struct SFloorParent {
  template <class TNode>
  explicit SFloorParent(const TNode& node)
      : children(node.children), whole(node.whole), rows(node.rows) {}

  const Report::NodeMap& children;
  const SWholeSum& whole;
  std::shared_ptr<const CSummaryRows>& rows;
};

/// Walks the nodes of one pass. Sums rise from the results in the tree's order while each
/// level's blocks are put in the order of the rows; hidden levels are summed all the same.
class CSummaryWalk {
 public:
  /// `sections` tells what the pass counts.
  CSummaryWalk(const SSummaryShape& shape, const SSummaryRequest& request,
               const CSectionChoice& sections)
      : shape_(shape), request_(request), sections_(sections) {}

  const SSummaryRequest& Request() const { return request_; }

  /// Walks the floors of `parent` that the filter selects, adds their quantities to `sum` and
  /// appends their rows to `out`, as deep as `level` opens. True if anything was counted.
  bool AddFloors(double& sum, CCellBlock& out, const SFloorParent& parent, std::wstring_view unit,
                 int level);

 private:
  // One system code on the way down, its sum so far and the rows of what lies below it.
  struct SFrame {
    SFrame(const CReportSysCode& sysCode, std::size_t references)
        : node(sysCode), next(sysCode.children.InOrder().begin()), chainBegin(references) {}
    const CReportSysCode& node;
    Report::NodeMap::Place next;
    std::size_t chainBegin;  // in the chain of references
    double sum = 0;
    std::set<CSysResultData> blocks;
    CCellBlock lines;
    int lineNumber = 1;
    bool counted = false;
  };

  using SysCodes = std::vector<const CReportSysCode*>;

  // A floor, the texts of the filter's pair, and the first system codes to walk, if not all.
  struct SFloorStep {
    const SFloorParent& parent;
    const CReportFloor& node;
    const CPickedFloor& picked;
    const std::wstring& drawingFloor;
    const std::wstring& floor;
    const SysCodes& sysCodes;
  };

  bool AddFloor(double& sum, const SFloorStep& step);
  bool AddFloorsByCode(double& sum, const SFloorParent& parent);
  SWholeSum AddParts(CCellBlock& out, const SysCodes& sysCodes, const CPickedFloor& picked);
  bool AddSysCode(double& sum, CCellBlock& out, const CReportSysCode& first,
                  const CPickedFloor& picked);
  void SetLevel(int level);
  bool Opens(std::size_t depth) const;
  bool ShowsFloors() const { return shape_.floorRow.Holds(level_); }
  bool MayEnter(const CReportSysCode& node, std::size_t depth) const;
  SysCodes ChosenSysCodes(const CReportFloor& node) const;
  void Enter(const CReportSysCode& node, bool isOther);
  bool AddResult(SFrame& frame, const CReportResult& result, const CPickedFloor& picked);
  void AddLine(CCellBlock& out, int number, const CReportResult& result, double quantity,
               int floorCount, CCellSource references);
  void AddSysCodeRow(CCellBlock& out, const CReportSysCode& node, std::size_t depth, double sum,
                     CCellSource references);
  CCellBlock SysCodeRows(SFrame& frame, std::size_t depth);
  const CSummaryRows& WholeRows(const SFloorParent& parent) const;
  CSummaryRows::SOpen Open() const;
  CCellSource ChainFrom(std::size_t begin) const;
  void FinishChain(CCellBlock& rows);

  const SSummaryShape& shape_;
  const SSummaryRequest& request_;
  const CSectionChoice& sections_;
  std::wstring_view unit_;         // of the item in hand: every sum below it has this unit
  int level_ = 0;                  // of the item in hand
  bool takesWholeFloors_ = false;  // nothing below a floor is left out
  CFloorBlocks floorBlocks_;
  std::vector<CSummaryRows::SPlacedCode> chosenCodes_;
  std::wstring title_;  // of a row in the making
  std::vector<SFrame> frames_;
  // The references of the results counted so far below the floor in hand: their text is written
  // when the floor is done.
  std::unique_ptr<SKeptText> chain_;
  std::size_t chainSize_ = 0;
  std::vector<const CReportResult*> references_;
};

#endif  // TALLY_REPORTS_SHARED_SUMMARY_WALK_H_

// The words that every report speaks: the enumerations, the filter condition, the accumulators and
// the records that a host keeps. Plain data, includable from every folder.
#ifndef TALLY_REPORT_MODEL_REPORT_TYPES_H_
#define TALLY_REPORT_MODEL_REPORT_TYPES_H_

#include <set>
#include <string>
#include <vector>

class IReportDataNode;

namespace Report {

/// A report's output: texts, one after the other. A row is the run of cells that begins at a level
/// marker ("@Cg", "@A" and so on) and ends before the next one. How many cells follow a marker is
/// fixed for each report (docs/row_layouts.md).
using CellArray = std::vector<std::wstring>;

/// The reports. The numbers are part of the host's interface and must not change; 2 is free.
enum EReportType : int {
  ReportSysJss = 0,      ///< calculation books, three variants
  ReportXhlHz = 1,       ///< consumption summary
  ReportXhlGl = 3,       ///< quantity overview
  ReportXhlCgHz = 4,     ///< over-height summary
  ReportPjHz = 5,        ///< fitting summary
  ReportPipeJRBW = 6,    ///< insulation table
  ReportBrushPaint = 7,  ///< paint work table
  ReportDuctH = 8,       ///< duct wall thickness table
  ReportDeHz = 9,        ///< quota summary
  ReportQdDeHz = 10,     ///< bill and quota summary
  ReportQdHz = 11,       ///< bill summary
  ReportNone = 99,       ///< no such report
};

/// The filter trees. The numbers are part of the host's interface and must not change.
enum ETreeType : int { TreeFloor = 0, TreeSysCode = 1, TreeCategory = 2 };

/// Expansion levels in their shared meaning; a report that numbers its levels differently declares
/// its own ELevelType. Any int may be passed: a row shows when its own test of the number holds.
enum ELevelType : int {
  LevelCategory = 0,  ///< component kind and attribute rows only
  LevelCalItem = 1,   ///< plus calculation items
  LevelFloor = 2,     ///< plus floors
  LevelSysCode1 = 3,  ///< plus system codes of the first level
  LevelSysCode2 = 4,  ///< plus system codes of the second level
  LevelSysCode3 = 5,  ///< plus system codes of the third level
  LevelDetail = 6,    ///< plus single circuits, where a report has them
};

/// One selected floor.
struct SFloorPair {
  std::wstring
      drawingFloor;    ///< key of the floor node; may be a standard floor repeated on several
  std::wstring floor;  ///< the floor that was selected; may be one floor out of drawingFloor
};

/// The filter that a host hands to a report. The default selects everything.
struct SNewCondition {
  bool allFloors = false;          ///< kept for the host; a report looks at `floors` alone
  std::vector<SFloorPair> floors;  ///< selected floors; empty takes every floor
  std::set<std::wstring>
      categories;            ///< component kinds, "category" or "category\kind"; empty: all
  std::wstring curCategory;  ///< current component kind, kept for the host
  std::vector<std::wstring> sysCodes;  ///< system code paths, names joined by "\"; empty: all
  std::wstring curSysCode;             ///< current system code, kept for the host
};

/// The sum of one row.
struct SResultData {
  double quantity = 0;
  std::wstring unit = L"m";
  std::wstring components;  ///< references of the components behind the row, each ended by "$"
};

/// Four summed quantities of one floor text, each times the number of components.
struct SQuantity {
  double quantity1 = 0;
  double quantity2 = 0;
  double quantity3 = 0;
  double quantity4 = 0;
  int floorCount = 0;  ///< floors that the floor text stands for
};

/// The sum of a block of the insulation table.
struct STypeSumQuantityData {
  std::wstring unit;
  double quantity1 = 0;
  double quantity2 = 0;
  double quantity3 = 0;
  double quantity4 = 0;
  int count = 1;
};

/// State of one column of a report, kept for the host.
struct SColumnState {
  std::wstring name;
  bool visible = false;
};

}  // namespace Report

/// What the user chose for one report.
struct NewReportConfigRec {
  bool visible = true;                        ///< the report's page is shown
  std::vector<Report::SColumnState> columns;  ///< in the host's order
  int expandLevel = 0;
};

/// Remembered selection in the tree of system codes or of component kinds.
struct SysCodeMemTJInfo {
  bool allSelected = false;
  std::vector<std::wstring> names;
};

/// Remembered selection in the tree of floors.
struct FloorTJInfo {
  bool allSelected = false;
  std::vector<Report::SFloorPair> floors;
};

/// The nodes that a walk of the paint, duct or insulation table stands in. Each is set as the walk
/// reaches its level; none is owned.
struct sReportData {
  const IReportDataNode* floor = nullptr;         ///< CReportFloor
  const IReportDataNode* sysCode = nullptr;       ///< CReportSysCode
  const IReportDataNode* category = nullptr;      ///< CReportCategory
  const IReportDataNode* attribute = nullptr;     ///< CReportAttribute
  const IReportDataNode* calItem = nullptr;       ///< CReportCalItem
  const IReportDataNode* resultDetail = nullptr;  ///< CReportResultDetail
};

#endif  // TALLY_REPORT_MODEL_REPORT_TYPES_H_

// The rows of the summaries that the tree keeps.
#ifndef TALLY_REPORTS_SHARED_SUMMARY_ROWS_H_
#define TALLY_REPORTS_SHARED_SUMMARY_ROWS_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "report_model/report_types.h"
#include "reports/shared/first_sys_codes.h"
#include "reports/shared/summary_cells.h"

/// The rows of the floors below a node where nothing is left out, and of all that lies below them,
/// in their order. A request shows some levels of all of them, of one floor, or of the system codes
/// that it chooses. The texts stand side by side, so that a request reads them forwards and no
/// node.
class CSummaryRows {
 public:
  /// Names allowed at each level of system codes.
  using Levels = std::vector<std::set<std::wstring, std::less<>>>;

  /// The levels that a request opens.
  struct SOpen {
    bool floors = false;
    std::size_t sysCodes = 0;  ///< how many levels of them, at most SYSCODE_LEVEL_COUNT
    bool lines = false;
  };

  /// Whether requests may open lines.
  enum class ELines { Shown, Hidden };

  /// Makes the rows of the floors among `nodes`, whose sums are known, and tells each floor
  /// which of the rows are its own.
  CSummaryRows(const Report::NodeMap& nodes, EFirstSysCodes firstSysCodes, EChainMark mark,
               ELines lines);

  /// Those that a request without a filter shows.
  SDetailItems Whole() const { return {0, wholeEnd_}; }

  /// Appends `rows`. REQUIRES: this outlives the block, as does `unit`.
  void AddTo(CCellBlock& out, const SDetailItems& rows, const SOpen& open,
             std::wstring_view unit) const;

  /// Whether no node is left out that a filter may show: of floors of equal height, and of system
  /// codes of equal number below one, the first alone has its place among the rows.
  bool HoldsAll() const { return holdsAll_; }

  /// Appends what a request shows that chooses system codes, and adds its quantities to `sum`. True
  /// if anything was counted. REQUIRES: HoldsAll; `names` has a level; this outlives the block, as
  /// does `unit`.
  bool AddChosenTo(CCellBlock& out, double& sum, const Levels& names, const SOpen& open,
                   std::wstring_view unit) const;

  /// A first system code on one floor.
  struct SPlacedCode {
    const CReportSysCode* node;
    std::uint32_t floor;     ///< place among the nodes
    std::uint32_t floorRow;  ///< the row of its floor
    std::uint32_t row;
  };
  /// The first system codes of these names, floor by floor as the nodes stand, those of a floor in
  /// the order of their rows.
  void Choose(std::vector<SPlacedCode>& chosen, const Levels::value_type& names) const;

 private:
  class CChosenCodes;
  class CMaker;
  class CRun;

  enum class EKind : std::uint8_t { Floor, SysCode, Line };
  // The title (name or formula) and the quantity as text stand in `text_`, a title of several
  // system codes once. Nodes that follow on each other in the tree do so in `references_`.
  struct SRow {
    double quantity;
    std::uint32_t next;  // to go on with where neither it nor what lies below is shown
    std::uint32_t title;
    std::uint32_t titleSize;
    std::uint32_t quantityText;
    std::uint32_t references;
    std::uint32_t referencesSize;
    std::uint32_t detail;  // the number of a line; the place of a system code's name in `names_`
    std::uint8_t quantitySize;
    EKind kind;
    std::uint8_t depth;  // of a system code
  };
  // Of the rows of floors and system codes, and of lines.
  static constexpr std::size_t kCells = 5;
  static constexpr std::size_t kLineCells = 6;
  // All first system codes of one name.
  struct SNamedCodes {
    std::wstring_view name;
    std::size_t first;  // in `placed_`
    std::size_t last;   // behind the last one
  };

  std::span<const SPlacedCode> Named(const std::wstring& name) const;
  std::wstring_view Title(const SRow& row) const {
    return std::wstring_view(text_).substr(row.title, row.titleSize);
  }
  std::wstring_view Quantity(const SRow& row) const {
    return std::wstring_view(text_).substr(row.quantityText, row.quantitySize);
  }
  std::wstring_view References(const SRow& row) const {
    return std::wstring_view(references_).substr(row.references, row.referencesSize);
  }
  static bool Shows(const SRow& row, const SOpen& open) {
    return row.kind == EKind::SysCode ? row.depth < open.sysCodes
           : row.kind == EKind::Floor ? open.floors
                                      : open.lines;
  }
  template <class TVisit>
  void ForEachShown(const SDetailItems& rows, const SOpen& open, TVisit&& visit) const {
    for (std::size_t i = rows.first; i < rows.last;) {
      const SRow& row = rows_[i];
      if (Shows(row, open)) {
        visit(row);
        ++i;
      } else {
        i = row.next;
      }
    }
  }
  std::size_t CountCells(const SDetailItems& rows, const SOpen& open) const;
  void Write(Report::CellArray& out, const SDetailItems& rows, const SOpen& open,
             std::wstring_view unit) const;
  void WriteRow(Report::CellArray& out, const SRow& row, std::wstring_view unit,
                std::wstring_view quantity, std::wstring_view references) const;

  std::vector<SRow> rows_;
  std::size_t wholeEnd_ = 0;
  bool holdsAll_ = true;
  std::wstring text_;
  std::wstring references_;
  std::vector<std::wstring_view> names_;  // of all system codes, in order
  std::vector<SNamedCodes> codes_;        // by name
  std::vector<SPlacedCode> placed_;       // by name, then in the order of their rows
};

#endif  // TALLY_REPORTS_SHARED_SUMMARY_ROWS_H_

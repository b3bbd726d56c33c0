// The rows of the system codes that a request chooses.
#ifndef TALLY_REPORTS_SHARED_CHOSEN_CODES_H_
#define TALLY_REPORTS_SHARED_CHOSEN_CODES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "report_model/report_types.h"
#include "reports/shared/summary_rows.h"

/// Below each floor the chosen codes. What lies below the last level that the filter names is shown
/// as it is kept; the rows above that, and those of floors, get sums and references of their own.
class CSummaryRows::CChosenCodes final : public IKeptRows {
 public:
  CChosenCodes(const CSummaryRows& kept, const Levels& names, const SOpen& open,
               std::wstring_view unit);

  /// Of all floors.
  SWholeSum Sum();
  std::size_t CellCount() const override { return cells_; }
  void Write(Report::CellArray& out) const override;

 private:
  // Some entries that stand side by side.
  struct SPart {
    std::size_t first = 0;
    std::size_t last = 0;
  };
  struct SValues {
    double quantity = 0;
    const SRow* source = nullptr;  // the row that the quantity is of, if it is that of one row
    SPart references;              // in `pieces_`
  };
  // Rows as they are kept, or one row with another sum and other references.
  struct SStep {
    SDetailItems rows;
    bool isChanged;
    SValues values;
  };
  // What one child adds to a system code.
  struct SAddend {
    std::uint32_t place;  // in the order of the tree
    SValues values;
  };

  struct SFloorSum {
    std::uint32_t floor;  // place among the nodes, by which floors are added
    double quantity;
  };

  void FindNames(const Levels& names);
  bool IsChosen(const SRow& sysCode) const;
  void AddCode(std::size_t at);
  void Add(const SRow& row);
  SValues SumOf(std::size_t firstAddend);
  void PrefetchStep(std::size_t step) const;
  std::wstring Joined(const SPart& references) const;

  const CSummaryRows& kept_;
  std::size_t levelCount_ = 0;                     // of the filter
  std::array<SPart, SYSCODE_LEVEL_COUNT> chosen_;  // in `chosenNames_`, level by level
  std::vector<std::uint32_t> chosenNames_;         // places among the kept names
  const SOpen open_;
  const std::wstring_view unit_;
  std::size_t cells_ = 0;
  std::vector<SStep> steps_;
  std::vector<std::wstring_view> pieces_;
  std::vector<SAddend> addends_;  // of the codes in hand
  std::vector<SFloorSum> floors_;
};

#endif  // TALLY_REPORTS_SHARED_CHOSEN_CODES_H_

// What the cells of each report's rows are, and how a cell array is cut into rows.
#ifndef TALLY_ROWS_ROW_LAYOUTS_H_
#define TALLY_ROWS_ROW_LAYOUTS_H_

#include <cstddef>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"
#include "report_model/report_types.h"

enum class ECellType {
  Text,
  Quantity,    ///< a number with six significant digits
  Code,        ///< an item's code: text, whatever it looks like
  Formula,     ///< a calculation as text
  Unit,        ///< of the quantities in the row
  References,  ///< chain of component references, each ended by "$"
};

/// "text", "quantity", "code", "formula", "unit" or "references".
TALLY_API const char* CellTypeName(ECellType type);

struct SCellLayout {
  const wchar_t* heading;
  const char* id;  ///< ASCII; a column has the same in every row and report
  ECellType type;
};

/// The cells behind one marker.
struct TALLY_API SRowLayout {
  const wchar_t* marker;
  int depth;  ///< indentation of the row, from 0
  std::span<const SCellLayout> cells;

  /// The position of a column among the cells; none if the row does not have it.
  std::optional<std::size_t> Find(std::string_view id) const;
};

/// The rows of one report, the outer ones first.
struct SReportLayout {
  /// Takes every variant that no earlier layout of its type takes.
  static constexpr int kAnyVariant = -1;

  Report::EReportType type;
  int variant;
  std::span<const SRowLayout> rows;
};

/// The cell array does not follow the layout of its report, or a row lacks the column that was
/// asked for.
class TALLY_API CLayoutError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One row of a cell array. Points into the array.
struct TALLY_API SRow {
  const SRowLayout* layout;
  std::span<const std::wstring> cells;  ///< without the marker; as many as the layout has

  bool Is(std::wstring_view marker) const { return marker == layout->marker; }
  bool Has(std::string_view id) const { return layout->Find(id).has_value(); }
  /// The cell of a column. Throws CLayoutError where the row has no such column.
  const std::wstring& Cell(std::string_view id) const;
  /// The number in a column of type Quantity; none where the cell is no number, as an empty one is.
  /// Throws CLayoutError where the row has no such column, or one of another type.
  std::optional<double> Quantity(std::string_view id = "quantity") const;
};

/// Every layout. The first one that fits a type and variant counts.
TALLY_API std::span<const SReportLayout> ReportLayouts();

/// Null for what is no report.
TALLY_API const SReportLayout* FindLayout(Report::EReportType type, int variant);

/// Cuts by marker and number of cells: a cell that reads like a marker is a cell. The rows point
/// into `cells`, which must outlive them. Throws CLayoutError where a row has no known marker or
/// lacks cells.
TALLY_API std::vector<SRow> CutRows(const SReportLayout& layout,
                                    std::span<const std::wstring> cells);
/// By the layout of that report. Throws CLayoutError for what is no report.
TALLY_API std::vector<SRow> CutRows(Report::EReportType type, int variant,
                                    std::span<const std::wstring> cells);
// The rows of an array that is about to end would dangle.
std::vector<SRow> CutRows(const SReportLayout& layout, Report::CellArray&& cells) = delete;
std::vector<SRow> CutRows(Report::EReportType type, int variant,
                          Report::CellArray&& cells) = delete;

#endif  // TALLY_ROWS_ROW_LAYOUTS_H_

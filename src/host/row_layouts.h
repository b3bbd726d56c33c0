// What the cells of each report's rows are, and how a cell array is cut into rows.
#ifndef TALLY_HOST_ROW_LAYOUTS_H_
#define TALLY_HOST_ROW_LAYOUTS_H_

#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "report_model/report_types.h"

enum class ECellType {
  Text,
  Quantity,    ///< a number with six significant digits
  Code,        ///< an item's code: text, whatever it looks like
  Formula,     ///< a calculation as text
  Unit,        ///< of the quantities in the row
  References,  ///< chain of component references, each ended by "$"
};

struct SCellLayout {
  const wchar_t* heading;
  const char* id;  ///< ASCII; a column has the same in every row and report
  ECellType type;
};

/// The cells behind one marker.
struct SRowLayout {
  const wchar_t* marker;
  int depth;  ///< indentation of the row, from 0
  std::span<const SCellLayout> cells;
};

/// The rows of one report, the outer ones first.
struct SReportLayout {
  Report::EReportType type;
  int variant;  ///< as SCatalogReport::variant
  std::span<const SRowLayout> rows;
};

/// One row of a cell array.
struct SRow {
  const SRowLayout* layout;
  std::span<const std::wstring> cells;  ///< without the marker; as many as the layout has
};

/// The cell array does not follow the layout of its report.
class CLayoutError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Null for a report that the catalogue does not have.
const SReportLayout* FindLayout(Report::EReportType type, int variant);

/// Cuts by marker and number of cells: a cell that reads like a marker is a cell. The rows point
/// into `cells`. Throws CLayoutError where a row has no known marker or lacks cells.
std::vector<SRow> CutRows(const SReportLayout& layout, std::span<const std::wstring> cells);

#endif  // TALLY_HOST_ROW_LAYOUTS_H_

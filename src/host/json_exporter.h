// Documents as JSON, for other programs.
#ifndef TALLY_HOST_JSON_EXPORTER_H_
#define TALLY_HOST_JSON_EXPORTER_H_

#include <vector>

#include "host/exporter.h"
#include "host/output.h"

/// One object with the head and an array of the tables. A row holds the rows below it, so that a
/// reader gets the tree; each row begins a line. Quantities are numbers as the engine writes them,
/// null where the cell is empty and a string where it is no JSON number, such as "inf"; all else
/// are strings. A column that a row's kind lacks is missing in its cells.
class CJsonExporter final : public IExporter {
 public:
  CJsonExporter(const SExportHead& head, const SExportOptions& options, COutput& output);

  void Write(const SExportTable& table) override;
  void End() override;

 private:
  void BeginRow(const SRow& row, const CColumns& columns);
  void EndRowsFrom(int depth);

  COutput& output_;
  const char* separator_ = "\n";  ///< ahead of what comes next in the innermost array
  std::vector<int> open_;         ///< depths of the rows that are not ended yet, outer ones first
};

#endif  // TALLY_HOST_JSON_EXPORTER_H_

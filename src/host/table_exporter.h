// Reports for the terminal.
#ifndef TALLY_HOST_TABLE_EXPORTER_H_
#define TALLY_HOST_TABLE_EXPORTER_H_

#include "host/exporter.h"
#include "host/output.h"

/// A title and a text table for each discipline, with a blank line between them.
class CTableExporter final : public IExporter {
 public:
  CTableExporter(const SExportHead&, const SExportOptions&, COutput& output) : output_(output) {}

  void Write(const SExportTable& table) override;
  void End() override {}

 private:
  COutput& output_;
  bool isBegun_ = false;
};

#endif  // TALLY_HOST_TABLE_EXPORTER_H_

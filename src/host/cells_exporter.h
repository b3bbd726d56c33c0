// The cells as the engine hands them out.
#ifndef TALLY_HOST_CELLS_EXPORTER_H_
#define TALLY_HOST_CELLS_EXPORTER_H_

#include "host/exporter.h"
#include "host/output.h"

/// Each cell a JSON string on its own line, markers included; columns are not chosen.
class CCellsExporter final : public IExporter {
 public:
  CCellsExporter(const SExportHead&, const SExportOptions&, COutput& output) : output_(output) {}

  void Write(const SExportTable& table) override;
  void End() override {}

 private:
  COutput& output_;
};

#endif  // TALLY_HOST_CELLS_EXPORTER_H_

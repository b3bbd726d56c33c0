#include "host/formats.h"

#include "host/cells_exporter.h"
#include "host/csv_exporter.h"
#include "host/html_exporter.h"
#include "host/json_exporter.h"
#include "host/table_exporter.h"
#include "host/xlsx_exporter.h"

namespace {

template <class TExporter>
std::unique_ptr<IExporter> Make(const SExportHead& head, const SExportOptions& options,
                                COutput& output) {
  return std::make_unique<TExporter>(head, options, output);
}

// A new format is one line here.
constexpr SFormat kFormats[] = {
    {"table", ".txt", false, true, false, Make<CTableExporter>},
    {"csv", ".csv", false, true, false, Make<CCsvExporter>},
    {"tsv", ".tsv", false, true, false, Make<CTsvExporter>},
    {"json", ".json", true, true, false, Make<CJsonExporter>},
    {"cells", ".txt", false, false, false, Make<CCellsExporter>},
    {"xlsx", ".xlsx", true, true, true, Make<CXlsxExporter>},
    {"html", ".html", true, true, false, Make<CHtmlExporter>},
};

}  // namespace

std::span<const SFormat> Formats() {
  return kFormats;
}

const SFormat* FindFormat(std::string_view name) {
  for (const SFormat& format : kFormats) {
    if (name == format.name) {
      return &format;
    }
  }
  return nullptr;
}

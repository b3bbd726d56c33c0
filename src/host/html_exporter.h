// Documents as a page for a browser.
#ifndef TALLY_HOST_HTML_EXPORTER_H_
#define TALLY_HOST_HTML_EXPORTER_H_

#include "host/exporter.h"
#include "host/output.h"

/// One file that needs nothing else: the page's own style and script, and the tables as JSON in
/// script elements that are data. The texts of a project are in these alone, so the file's markup
/// is the same for every project. The page's security policy allows this style and script, and
/// nothing from elsewhere.
class CHtmlExporter final : public IExporter {
 public:
  CHtmlExporter(const SExportHead& head, const SExportOptions& options, COutput& output);

  void Write(const SExportTable& table) override;
  void End() override;

 private:
  void BeginData(const char* name);
  void EndData();
  void WriteKinds(const CColumns& columns);
  void WriteRow(const SRow& row, const CColumns& columns);

  COutput& output_;
  COutput data_;  ///< JSON on its way into the element that BeginData opened
};

#endif  // TALLY_HOST_HTML_EXPORTER_H_

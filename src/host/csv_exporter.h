// Rows as lines of parted values, for other programs.
#ifndef TALLY_HOST_CSV_EXPORTER_H_
#define TALLY_HOST_CSV_EXPORTER_H_

#include <string_view>

#include "host/exporter.h"
#include "host/output.h"

/// What CSV and TSV share: a heading line with the columns' headings, then a line for each row with
/// its discipline, its depth in the row layout (0 for a section) and its cells in the chosen
/// columns, empty where its kind of row has none. Tables that follow the first are of its report.
class CLinesExporter : public IExporter {
 public:
  void Write(const SExportTable& table) final;
  void End() final {}

 protected:
  CLinesExporter(const SExportOptions& options, COutput& output)
      : output_(output), isSafe_(options.csvSafe) {}

  COutput& output_;

 private:
  virtual void BeginFile() = 0;
  virtual std::string_view Separator() const = 0;
  virtual std::string_view LineEnd() const = 0;
  virtual void WriteValue(std::wstring_view text) = 0;

  void WriteHeadings(const CColumns& columns);
  void WriteCell(const SCellLayout& column, const std::wstring& text);

  const bool isSafe_;
  bool isBegun_ = false;
};

/// RFC 4180 in UTF-8 with a byte order mark, lines ended by CR and LF.
class CCsvExporter final : public CLinesExporter {
 public:
  CCsvExporter(const SExportHead&, const SExportOptions& options, COutput& output)
      : CLinesExporter(options, output) {}

 private:
  void BeginFile() override { output_.Write("\xEF\xBB\xBF"); }
  std::string_view Separator() const override { return ","; }
  std::string_view LineEnd() const override { return "\r\n"; }
  void WriteValue(std::wstring_view text) override;
};

/// UTF-8 lines of values parted by tabs; in a value a tab, a line feed and a backslash are written
/// as the two characters that C has for them.
class CTsvExporter final : public CLinesExporter {
 public:
  CTsvExporter(const SExportHead&, const SExportOptions& options, COutput& output)
      : CLinesExporter(options, output) {}

 private:
  void BeginFile() override {}
  std::string_view Separator() const override { return "\t"; }
  std::string_view LineEnd() const override { return "\n"; }
  void WriteValue(std::wstring_view text) override;
};

#endif  // TALLY_HOST_CSV_EXPORTER_H_

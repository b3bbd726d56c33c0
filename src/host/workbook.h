// A workbook on its way into an output.
#ifndef TALLY_HOST_WORKBOOK_H_
#define TALLY_HOST_WORKBOOK_H_

#include <xlsxwriter.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "host/output.h"
#include "host/temp_file.h"

/// How a row stands out.
enum class ERowLook { Plain, Bold, Section, Heading };
/// What a cell holds, as far as it is shown differently.
enum class ECellLook { Text, Wrapped, Number, Level };

/// Gathers sheets in temporary files. Every operation throws CHostError, which names the cause,
/// where there is no room for them.
class CWorkbook {
 public:
  /// `created` is what the file says of its own making.
  explicit CWorkbook(std::time_t created);
  CWorkbook(const CWorkbook&) = delete;
  CWorkbook& operator=(const CWorkbook&) = delete;

  /// A sheet behind those that are there, which is the workbook's. `name` (UTF-8) must be a valid
  /// one that no other sheet has.
  lxw_worksheet* AddSheet(const std::string& name);
  lxw_format* Format(ERowLook row, ECellLook cell) const {
    return formats_[static_cast<std::size_t>(row)][static_cast<std::size_t>(cell)];
  }
  lxw_format* TitleFormat() const { return title_; }
  lxw_format* LinkFormat() const { return link_; }

  /// Once for each sheet, behind its last row.
  void EndSheet(lxw_worksheet* sheet);
  /// Throws what stops the sheet from being written; to be called now and then, as a full disk does
  /// not show otherwise until the end.
  void RequireWritten(const lxw_worksheet* sheet) const;
  /// Writes the workbook, whose sheets have ended, to `output`. Nothing else may follow.
  void WriteTo(COutput& output);

 private:
  static constexpr std::size_t kRowLooks = 4;
  static constexpr std::size_t kCellLooks = 4;

  void MakeFormats();
  void CopyTo(std::FILE* file, COutput& output) const;
  [[noreturn]] void ThrowTempError() const;

  CTempFile file_;
  std::unique_ptr<lxw_workbook, void (*)(lxw_workbook*)> workbook_;
  std::array<std::array<lxw_format*, kCellLooks>, kRowLooks> formats_ = {};
  lxw_format* title_ = nullptr;
  lxw_format* link_ = nullptr;
  std::vector<std::uint64_t> sheetSizes_;  ///< bytes of each sheet's rows
};

/// Throws CHostError where libxlsxwriter had one.
void RequireDone(lxw_error error);

#endif  // TALLY_HOST_WORKBOOK_H_

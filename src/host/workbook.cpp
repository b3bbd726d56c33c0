#include "host/workbook.h"

#include <sys/resource.h>

#include <cerrno>
#include <cstdio>
#include <new>
#include <numeric>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/host_error.h"
#include "host/joined.h"
#include "host/workbook_check.h"

namespace {

constexpr lxw_color_t kSectionFill = 0xDDEBF7;
constexpr lxw_color_t kHeadingFill = 0xD9D9D9;
constexpr double kTitleSize = 16;
/// Parts beyond this size are written with the format's extension for large ones, which not all
/// readers know.
constexpr std::uint64_t kLargeSize = 3'500'000'000;

// Each sheet has a file of its own open until the end.
void AllowManyFiles() {
  rlimit files = {};
  if (getrlimit(RLIMIT_NOFILE, &files) == 0 && files.rlim_cur < files.rlim_max) {
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);
  }
}

template <class T>
T* RequireMade(T* made) {
  if (made == nullptr) {
    throw CHostError(Joined("cannot make the workbook: ", std::generic_category().message(errno)));
  }
  return made;
}

lxw_workbook* NewWorkbook(const std::string& file, std::string folder) {
  lxw_workbook_options options = {};
  options.constant_memory = LXW_TRUE;
  options.tmpdir = folder.data();
  return RequireMade(workbook_new_opt(file.c_str(), &options));
}

// What lxw_workbook_free leaves open is a file of each sheet.
void Abandon(lxw_workbook* workbook) {
  lxw_worksheet* sheet = nullptr;
  LXW_FOREACH_WORKSHEET(sheet, workbook) {
    std::fclose(sheet->optimize_tmpfile);
  }
  lxw_workbook_free(workbook);
}

void SetRowLook(lxw_format* format, ERowLook look) {
  if (look == ERowLook::Plain) {
    return;
  }
  format_set_bold(format);
  if (look == ERowLook::Bold) {
    return;
  }
  format_set_pattern(format, LXW_PATTERN_SOLID);
  format_set_fg_color(format, look == ERowLook::Section ? kSectionFill : kHeadingFill);
  if (look == ERowLook::Heading) {
    format_set_align(format, LXW_ALIGN_CENTER);
    format_set_text_wrap(format);
    format_set_bottom(format, LXW_BORDER_THIN);
  }
}

// No two looks may be the same: libxlsxwriter looks the second one up again for every cell.
void SetCellLook(lxw_format* format, ECellLook look) {
  if (look == ECellLook::Wrapped) {
    format_set_text_wrap(format);
  } else if (look == ECellLook::Level) {
    format_set_align(format, LXW_ALIGN_CENTER);
  } else if (look == ECellLook::Number) {
    format_set_align(format, LXW_ALIGN_RIGHT);
  }
}

}  // namespace

void RequireDone(lxw_error error) {
  if (error == LXW_ERROR_MEMORY_MALLOC_FAILED) {
    throw std::bad_alloc();
  }
  if (error != LXW_NO_ERROR) {
    throw CHostError(Joined("cannot make the workbook: ", lxw_strerror(error)));
  }
}

CWorkbook::CWorkbook(std::time_t created)
    : workbook_(NewWorkbook(file_.Path().string(), file_.Path().parent_path().string()), Abandon) {
  AllowManyFiles();
  lxw_doc_properties properties = {};
  properties.created = created;
  RequireDone(workbook_set_properties(workbook_.get(), &properties));
  MakeFormats();
}

void CWorkbook::MakeFormats() {
  for (std::size_t row = 0; row < kRowLooks; ++row) {
    for (std::size_t cell = 0; cell < kCellLooks; ++cell) {
      lxw_format* format = RequireMade(workbook_add_format(workbook_.get()));
      format_set_align(format, LXW_ALIGN_VERTICAL_CENTER);
      SetRowLook(format, static_cast<ERowLook>(row));
      SetCellLook(format, static_cast<ECellLook>(cell));
      formats_[row][cell] = format;
    }
  }
  title_ = RequireMade(workbook_add_format(workbook_.get()));
  format_set_bold(title_);
  format_set_font_size(title_, kTitleSize);
  link_ = RequireMade(workbook_add_format(workbook_.get()));
  format_set_align(link_, LXW_ALIGN_VERTICAL_CENTER);
  format_set_hyperlink(link_);
}

lxw_worksheet* CWorkbook::AddSheet(const std::string& name) {
  RequireDone(workbook_validate_sheet_name(workbook_.get(), name.c_str()));
  lxw_worksheet* sheet = RequireMade(workbook_add_worksheet(workbook_.get(), name.c_str()));
  sheetSizes_.push_back(0);
  return sheet;
}

void CWorkbook::ThrowTempError() const {
  const int error = errno;
  throw CHostError(Joined(
      "cannot write a temporary file in '", file_.Path().parent_path().string(), "'",
      error == 0 ? "" : Joined(": ", std::generic_category().message(error)), "; see TMPDIR"));
}

void CWorkbook::RequireWritten(const lxw_worksheet* sheet) const {
  if (std::ferror(sheet->optimize_tmpfile) != 0) {
    ThrowTempError();
  }
}

void CWorkbook::EndSheet(lxw_worksheet* sheet) {
  lxw_worksheet_write_single_row(sheet);
  if (std::fflush(sheet->optimize_tmpfile) != 0) {
    ThrowTempError();
  }
  RequireWritten(sheet);
  sheetSizes_[sheet->index] = static_cast<std::uint64_t>(ftello(sheet->optimize_tmpfile));
}

void CWorkbook::WriteTo(COutput& output) {
  if (std::accumulate(sheetSizes_.begin(), sheetSizes_.end(), std::uint64_t{0}) > kLargeSize) {
    workbook_->options.use_zip64 = LXW_TRUE;
  }
  errno = 0;
  const lxw_error error = workbook_close(workbook_.release());
  if (error != LXW_NO_ERROR && error != LXW_ERROR_MEMORY_MALLOC_FAILED && errno != 0) {
    ThrowTempError();
  }
  RequireDone(error);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(file_.Path().c_str(), "rb"),
                                                             std::fclose);
  if (file == nullptr) {
    ThrowTempError();
  }
  if (!IsWholeWorkbook(file.get(), sheetSizes_)) {
    ThrowTempError();
  }
  CopyTo(file.get(), output);
}

void CWorkbook::CopyTo(std::FILE* file, COutput& output) const {
  std::rewind(file);
  std::vector<char> piece(1 << 16);
  errno = 0;
  while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), file)) {
    output.Write({piece.data(), size});
  }
  if (std::ferror(file) != 0) {
    ThrowTempError();
  }
}

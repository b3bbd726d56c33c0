// Whether a workbook's file is whole.
#ifndef TALLY_HOST_WORKBOOK_CHECK_H_
#define TALLY_HOST_WORKBOOK_CHECK_H_

#include <cstdint>
#include <cstdio>
#include <span>

/// False where the file, read from where it stands, is no ZIP file of complete XML parts, or where
/// the rows of a sheet, in order, do not take `sheetSizes` bytes. libxlsxwriter gathers its parts
/// in temporary files and does not see when these are cut short by a full disk.
bool IsWholeWorkbook(std::FILE* file, std::span<const std::uint64_t> sheetSizes);

#endif  // TALLY_HOST_WORKBOOK_CHECK_H_

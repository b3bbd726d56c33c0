// Status files of any content. What was read from one is saved and read again: from the second file
// on nothing changes any more.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_check.h"
#include "host/output.h"
#include "host/status_json.h"
#include "platform/portable/utf8_text.h"
#include "platform/xml_service.h"
#include "report_mng/report_status_mng.h"
#include "support/temp_folder.h"

namespace {

/// What was read, and the file that it was saved to.
struct SPass {
  bool isRead = false;
  std::string status;
  std::string file;
};

/// Reads the file as a new process does, and saves it.
SPass ReadAndSave(const tally_test::CTempFolder& folder) {
  static const CReportStatusMng fresh = *CReportStatusMng::Instance();
  CReportStatusMng& status = *CReportStatusMng::Instance();
  status = fresh;
  const auto file = folder / "status.xml";
  SPass pass;
  try {
    pass.isRead = status.ReadReportStatus(WideFromUtf8(file.string()));
  } catch (const CXmlError& error) {
    Require(error.Code() == CXmlError::kTypeMismatch, "reading fails by a conversion alone");
  }
  SReportStatus state;
  status.GetStatus(state);
  COutput output;
  WriteStatusJson(state, output);
  pass.status = output.Text();
  status.SaveReportStatus();
  pass.file = tally_test::ReadBytes(file);
  status = fresh;
  return pass;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const tally_test::CTempFolder folder;
  tally_test::WriteBytes(folder / "status.xml",
                         std::string(reinterpret_cast<const char*>(data), size));
  ReadAndSave(folder);
  const SPass second = ReadAndSave(folder);
  const SPass third = ReadAndSave(folder);
  Require(second.isRead && third.isRead, "a file that was saved is a status");
  Require(second.status == third.status, "the status stays");
  Require(second.file == third.file, "the file stays");
  return 0;
}

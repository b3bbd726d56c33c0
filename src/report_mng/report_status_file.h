// The report status as an XML document (docs/status_file.md).
#ifndef TALLY_REPORT_MNG_REPORT_STATUS_FILE_H_
#define TALLY_REPORT_MNG_REPORT_STATUS_FILE_H_

#include <map>
#include <string>

#include "platform/app_profile.h"
#include "platform/xml_service.h"
#include "report_mng/report_status.h"

// What the XML service throws passes through all of these; what was read before stays read.

/// Fills an empty document. `version` is stamped on it.
void WriteStatusDocument(IXmlDocument& document, const SReportStatus& status,
                         const std::wstring& version);

/// Reads a loaded document into `status`, whose maps and sections are empty, and its version into
/// `version`; what the document does not name stays. False for a document of another kind.
bool ReadStatusDocument(IXmlDocument& document, SReportStatus& status, std::wstring& version);

/// Reads the condition of one discipline, in the layout of that version.
void ReadConditionElement(const IXmlNode& node, const CKorVersion& version,
                          std::map<std::wstring, Report::SNewCondition>& conditions);

/// Reads the remembered selections of all disciplines.
void ReadTreesElement(const IXmlNode& node, std::map<std::wstring, TJTreeRec>& trees);

#endif  // TALLY_REPORT_MNG_REPORT_STATUS_FILE_H_

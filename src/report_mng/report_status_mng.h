// What the user chose for the reports of the open project.
#ifndef TALLY_REPORT_MNG_REPORT_STATUS_MNG_H_
#define TALLY_REPORT_MNG_REPORT_STATUS_MNG_H_

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"
#include "platform/xml_service.h"
#include "report_mng/report_status.h"
#include "report_model/report_types.h"

/// Holds the choices for the host; the reports consult the construction sections and the
/// divided-node switch alone. All keys are the host's texts. Getters copy out: one with an out
/// argument leaves it alone where the key has no entry. Lives to the end of the process. Copies are
/// independent; one that is taken early and put back later empties everything, the remembered path
/// too.
class TALLY_API CReportStatusMng {
 public:
  static CReportStatusMng* Instance();

  void SetCurReport(const std::wstring& report) { status_.curReport = report; }
  void GetCurReport(std::wstring& report) const { report = status_.curReport; }
  void SetCurSpec(const std::wstring& spec) { status_.curSpec = spec; }
  void GetCurSpec(std::wstring& spec) const { spec = status_.curSpec; }
  /// Whether results are counted by construction section.
  void SetIsBySgd(bool isBySgd) { status_.isBySgd = isBySgd; }
  bool GetIsBySgd() const { return status_.isBySgd; }
  /// Whether the calculation books divide their trees by type. Takes effect on books that are
  /// folded afterwards (CReportMng::ClearXHLSysJSSReportData).
  void SetIsDividedNode(bool isDividedNode) { status_.isDividedNode = isDividedNode; }
  bool GetIsDividedNode() const { return status_.isDividedNode; }

  /// The displayed construction sections.
  void SetDispSgd(const std::vector<std::wstring>& names) { status_.dispSgd = names; }
  /// Adds them to the set, which is not cleared.
  void GetDispSgd(std::set<std::wstring>& names) const {
    names.insert(status_.dispSgd.begin(), status_.dispSgd.end());
  }
  /// Whether a result of the section counts: every one with the by-section flag off, a displayed
  /// one with it on.
  bool CheckIsValidSgd(std::wstring_view name) const;
  /// The displayed sections in their order, joined by ",".
  std::wstring CheckSelSgdNames() const;

  // Reports. A setter makes a record from the defaults where there is none.
  void SetReportVisible(const std::wstring& report, bool visible);
  /// True for a report without a record.
  bool GetReportVisible(const std::wstring& report) const;
  void SetReportExpand(const std::wstring& report, int level);
  void GetReportExpand(const std::wstring& report, int& level) const;
  void SetReportColStatus(const std::wstring& report,
                          const std::vector<Report::SColumnState>& columns);
  void GetReportColStatus(const std::wstring& report,
                          std::vector<Report::SColumnState>& columns) const;
  /// Replaces the map by a copy of all records.
  void GetReportStatus(std::map<std::wstring, NewReportConfigRec>& reports) const;

  // Disciplines.
  void SetTreeStatus(const std::wstring& spec, const Report::SNewCondition& condition);
  void GetTreeStatus(const std::wstring& spec, Report::SNewCondition& condition) const;
  /// Replaces the map by a copy of all conditions.
  void GetSpecTreeStatus(std::map<std::wstring, Report::SNewCondition>& conditions) const;
  /// Replaces the three remembered selections of a discipline.
  void SetTJTJTree(const std::wstring& spec, const SysCodeMemTJInfo& sysCode,
                   const FloorTJInfo& floor, const SysCodeMemTJInfo& member);
  void GetSyscodeTJTree(const std::wstring& spec, SysCodeMemTJInfo& sysCode) const;
  void GetFloorTJTree(const std::wstring& spec, FloorTJInfo& floor) const;
  void GetMemTJTree(const std::wstring& spec, SysCodeMemTJInfo& member) const;

  /// Replaces `status` by a copy of everything.
  void GetStatus(SReportStatus& status) const { status = status_; }

  // The status file (docs/status_file.md). A failing XML service raises CXmlError in each of these.
  /// Goes over to another project: saves the status of the one that is left, remembers the path,
  /// forgets maps and sections, and reads the file. False where there is no such file, or no status
  /// in it, and for the empty path, which ends in no open project. Raised while saving, everything
  /// is as before; raised while reading, what was read so far is kept.
  bool ReadReportStatus(const std::wstring& path);
  /// Writes the file at the remembered path, stamped with the application's version. Does nothing
  /// without a path or where the XML service has no documents. Raised, the old file is whole.
  void SaveReportStatus() const;
  /// Reads one element of a condition, in the layout of the remembered file version, and replaces
  /// the discipline's. False for null.
  bool ReadConditionLable(std::shared_ptr<IXmlNode> node);
  /// Reads the element of all remembered selections, and replaces those of its disciplines. False
  /// for null.
  bool ReadTJTreeLable(std::shared_ptr<IXmlNode> node);

 private:
  CReportStatusMng() = default;

  SReportStatus status_;
  std::wstring path_;         ///< of the status file; empty: no project is open
  std::wstring fileVersion_;  ///< of the last file that had one
};

#endif  // TALLY_REPORT_MNG_REPORT_STATUS_MNG_H_

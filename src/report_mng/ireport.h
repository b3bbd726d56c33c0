// What every report and every filter tree is to the registry.
#ifndef TALLY_REPORT_MNG_IREPORT_H_
#define TALLY_REPORT_MNG_IREPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"

/// A host gets an IReport from CReportMng, turns it into the concrete class and calls that class's
/// row operation. The registry owns it.
class TALLY_API IReport {
 public:
  virtual ~IReport() = default;
  /// Frees what the report built.
  virtual void Clear() = 0;
  /// Builds the report from the open project. Raises std::out_of_range where a row's index lies
  /// outside its vector; the report is then not filed.
  virtual void CreatData() = 0;
  /// Stores copies of both.
  virtual void UpdateCondition(const std::wstring& requestSpec,
                               const Report::SNewCondition& requestCondition) {
    spec = requestSpec;
    condition = requestCondition;
  }

  std::wstring spec;                ///< discipline of the last request, empty at first
  Report::SNewCondition condition;  ///< filter of the last request

 protected:
  IReport() = default;
  IReport(const IReport&) = default;
  IReport& operator=(const IReport&) = default;
};

#endif  // TALLY_REPORT_MNG_IREPORT_H_

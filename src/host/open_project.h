// The project that a command works on.
#ifndef TALLY_HOST_OPEN_PROJECT_H_
#define TALLY_HOST_OPEN_PROJECT_H_

#include <memory>
#include <optional>
#include <string>

#include "host/host_error.h"
#include "host/read_watch.h"
#include "platform/db_operator.h"
#include "report_model/report_types.h"

/// A record set could not be read. The message names its table and the cause.
class CReadError : public CHostError {
 public:
  explicit CReadError(const SDbFailure& failure);
};

/// Opens a project database for the engine with its own setting "is_qd_mode" (a project without the
/// setting is priced by bill items). One at a time, from a command to the end of the process.
class COpenProject {
 public:
  /// `file` is UTF-8; `stats` are told of every read and outlive the project. Throws CHostError for
  /// what cannot be opened: no such file, no project database, another version.
  explicit COpenProject(const std::string& file, CRunStats* stats = nullptr);

  /// Opens the same file in the given mode.
  void Reopen(bool isQdMode);

  /// Throws CReadError where the set was asked for and could not be read.
  void RequireSet(ERecordSet set) const;
  void RequireResultSet(Report::EReportType type) const;
  /// The same for the four sets that are read with the opening.
  void RequireTrees() const;

 private:
  std::wstring path_;
  std::shared_ptr<CReadWatch> watch_;
};

#endif  // TALLY_HOST_OPEN_PROJECT_H_

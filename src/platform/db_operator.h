// The library that reads a project database into plain records.
#ifndef TALLY_PLATFORM_DB_OPERATOR_H_
#define TALLY_PLATFORM_DB_OPERATOR_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/export.h"
#include "platform/replaceable.h"
#include "result_store/db_records.h"

/// Why a read failed, for a host that wants to tell its user.
struct SDbFailure {
  std::wstring file;
  std::string table;     ///< empty where the file as a whole is meant
  std::int64_t row = 0;  ///< id of the row at fault, 0 where no row is
  std::string message;   ///< UTF-8
};

/// Reader of project databases. Every read appends to the vectors that it is given; it answers
/// false on any failure and has then appended nothing. The engine does not look at the answer.
/// Memory exhaustion raises std::bad_alloc. The path is the host's own text. The read that is made
/// last decides which project the settings and libraries (project_settings.h, chapter_libraries.h)
/// answer for.
class TALLY_API CDbOperator : public CReplaceable<CDbOperator> {
 public:
  /// On SQLite; the schema is in docs/project_database.md.
  static std::shared_ptr<CDbOperator> MakePortable();

  virtual ~CDbOperator() = default;

  /// Version number of the database's format; 0 for what is no project database.
  virtual int GetMdbVertion(const std::wstring& path) = 0;
  /// All component kinds of the project.
  virtual bool ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& records,
                                const std::wstring& path) = 0;
  /// All system codes of the project.
  virtual bool ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& records,
                               const std::wstring& path) = 0;
  /// All floors, in the project's order.
  virtual bool ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& records,
                             const std::wstring& path) = 0;
  /// The names of all construction sections.
  virtual bool ReadSgdAttData(std::vector<std::wstring>& names, const std::wstring& path) = 0;
  /// The consumption set (`summary` true) or the overview set.
  virtual bool ReadXhlData(KorDMRec::SKorDMResultData& data, const std::wstring& path,
                           bool summary) = 0;
  virtual bool ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data,
                                 const std::wstring& path) = 0;
  /// The over-height set.
  virtual bool ReadCgData(KorDMRec::SKorDMResultData& data, const std::wstring& path) = 0;
  /// The fitting set.
  virtual bool ReadPjData(KorDMRec::SKorDMPjResultData& data, const std::wstring& path) = 0;
  /// The bill and quota set; the project's bill mode is handed through.
  virtual bool ReadQdDeData(KorDMRec::SKorDMQdDeResultData& data, const std::wstring& path,
                            bool isQdMode) = 0;

  /// The failure of the last operation that failed since ForgetFailure, if there was one.
  virtual std::optional<SDbFailure> LastFailure() const { return std::nullopt; }
  virtual void ForgetFailure() {}
};

#endif  // TALLY_PLATFORM_DB_OPERATOR_H_

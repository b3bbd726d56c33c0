// The reader of project databases on SQLite.
#ifndef TALLY_PLATFORM_PORTABLE_SQLITE_DB_OPERATOR_H_
#define TALLY_PLATFORM_PORTABLE_SQLITE_DB_OPERATOR_H_

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/db_operator.h"
#include "platform/portable/project_source.h"

class CSqliteDbOperator : public CDbOperator {
 public:
  /// Every read, also one that fails, makes its path the source's; GetMdbVertion does not.
  explicit CSqliteDbOperator(std::shared_ptr<CProjectSource> source);

  int GetMdbVertion(const std::wstring& path) override;
  bool ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& records,
                        const std::wstring& path) override;
  bool ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& records,
                       const std::wstring& path) override;
  bool ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& records,
                     const std::wstring& path) override;
  bool ReadSgdAttData(std::vector<std::wstring>& names, const std::wstring& path) override;
  bool ReadXhlData(KorDMRec::SKorDMResultData& data, const std::wstring& path,
                   bool summary) override;
  bool ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data, const std::wstring& path) override;
  bool ReadCgData(KorDMRec::SKorDMResultData& data, const std::wstring& path) override;
  bool ReadPjData(KorDMRec::SKorDMPjResultData& data, const std::wstring& path) override;
  bool ReadQdDeData(KorDMRec::SKorDMQdDeResultData& data, const std::wstring& path,
                    bool isQdMode) override;

  std::optional<SDbFailure> LastFailure() const override { return source_->LastFailure(); }
  void ForgetFailure() override { source_->ForgetFailure(); }

 private:
  /// Runs `read` on the opened project; false, with the failure recorded, where it throws one.
  template <class TRead>
  bool Guard(const std::wstring& path, TRead read);
  /// Guard for what makes its path the source's.
  template <class TRead>
  bool Read(const std::wstring& path, TRead read);

  std::shared_ptr<CProjectSource> source_;
};

#endif  // TALLY_PLATFORM_PORTABLE_SQLITE_DB_OPERATOR_H_

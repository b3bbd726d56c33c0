// Remembers which record sets of the project could not be read.
#ifndef TALLY_HOST_READ_WATCH_H_
#define TALLY_HOST_READ_WATCH_H_

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/run_stats.h"
#include "platform/db_operator.h"
#include "report_model/report_types.h"

/// What is read at one time.
enum class ERecordSet {
  CategoryTree,
  SysCodeTree,
  FloorTree,
  SgdTree,
  Summary,
  Overview,
  OverHeight,
  Detail,
  Fitting,
  BillQuota,
};

/// The result set that a report is folded from; none for an unknown type.
std::optional<ERecordSet> ResultSetOf(Report::EReportType type);

/// Stands in front of another operator. The engine is silent about reads that fail and takes them
/// for empty; the host asks here, for as long as the engine keeps the empty set.
class CReadWatch : public CDbOperator {
 public:
  /// `stats` are told of times and rows and outlive the watch; null for none.
  explicit CReadWatch(std::shared_ptr<CDbOperator> reader, CRunStats* stats = nullptr);

  /// Why the last read of the set failed; none where it did not, or where there was none.
  std::optional<SDbFailure> FailureOf(ERecordSet set) const;

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

  std::optional<SDbFailure> LastFailure() const override { return reader_->LastFailure(); }
  void ForgetFailure() override { reader_->ForgetFailure(); }

 private:
  /// `rows` are those that `read` appends to.
  template <class TRow, class TRead>
  bool Watch(ERecordSet set, const std::wstring& path, const std::vector<TRow>& rows, TRead read);

  std::shared_ptr<CDbOperator> reader_;
  CRunStats* stats_;
  std::map<ERecordSet, SDbFailure> failures_;
};

#endif  // TALLY_HOST_READ_WATCH_H_

// A project that is made in memory.
#ifndef TALLY_BENCH_MEMORY_OPERATOR_H_
#define TALLY_BENCH_MEMORY_OPERATOR_H_

#include <string>
#include <vector>

#include "platform/db_operator.h"
#include "result_store/tally_data_mng.h"

/// Answers every read with nothing; a made project overrides what it has.
class CMemoryOperator : public CDbOperator {
 public:
  int GetMdbVertion(const std::wstring& /*path*/) override { return CTallyDataMng::kMdbVertion; }
  bool ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& /*records*/,
                        const std::wstring& /*path*/) override {
    return true;
  }
  bool ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& /*records*/,
                       const std::wstring& /*path*/) override {
    return true;
  }
  bool ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& /*records*/,
                     const std::wstring& /*path*/) override {
    return true;
  }
  bool ReadSgdAttData(std::vector<std::wstring>& /*names*/, const std::wstring& /*path*/) override {
    return true;
  }
  bool ReadXhlData(KorDMRec::SKorDMResultData& /*data*/, const std::wstring& /*path*/,
                   bool /*summary*/) override {
    return true;
  }
  bool ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& /*data*/,
                         const std::wstring& /*path*/) override {
    return true;
  }
  bool ReadCgData(KorDMRec::SKorDMResultData& /*data*/, const std::wstring& /*path*/) override {
    return true;
  }
  bool ReadPjData(KorDMRec::SKorDMPjResultData& /*data*/, const std::wstring& /*path*/) override {
    return true;
  }
  bool ReadQdDeData(KorDMRec::SKorDMQdDeResultData& /*data*/, const std::wstring& /*path*/,
                    bool /*isQdMode*/) override {
    return true;
  }
};

#endif  // TALLY_BENCH_MEMORY_OPERATOR_H_

// A project that a host has in memory.
#ifndef TALLY_EXAMPLES_OWN_RECORDS_MEMORY_PROJECT_H_
#define TALLY_EXAMPLES_OWN_RECORDS_MEMORY_PROJECT_H_

#include <string>
#include <vector>

#include "platform/db_operator.h"

/// One measured run of pipe.
struct SPipeRun {
  std::wstring component;
  std::wstring kind;
  std::wstring size;
  std::wstring floors;  ///< floor expression
  double metres;
};

/// Serves the consumption set of one discipline; every other table is empty, which is no failure.
/// The path that a host opens it by is a name only.
class CMemoryProject final : public CDbOperator {
 public:
  CMemoryProject(std::wstring discipline, std::vector<SPipeRun> runs);

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

 private:
  std::wstring discipline_;
  std::vector<SPipeRun> runs_;
};

#endif  // TALLY_EXAMPLES_OWN_RECORDS_MEMORY_PROJECT_H_

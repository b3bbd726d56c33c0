// The cache between the project database and the reports.
#ifndef TALLY_RESULT_STORE_TALLY_DATA_MNG_H_
#define TALLY_RESULT_STORE_TALLY_DATA_MNG_H_

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "result_store/db_records.h"

/// Remembers which project is open, reads its small tree records at once and each result set when a
/// report first asks for it. Lives to the end of the process. References that it hands out stay
/// valid until an InitData that changes the project. Not for two threads: its getters load.
class TALLY_API CTallyDataMng {
 public:
  static CTallyDataMng* Instance();

  /// Sort number of everything that the project does not number.
  static constexpr int kUnknownSortId = 1000000;
  /// The version of project databases that the engine reads.
  static constexpr int kMdbVertion = 9;

  /// Opens a project: drops all data and all reports, closes the bill and quota libraries and reads
  /// the tree records. The same path and flag again change nothing. A failure that is raised leaves
  /// no project open.
  void InitData(const std::wstring& path, bool isQdMode);

  /// True for version 9 alone. An older one shows the message box, a newer one nothing.
  bool CheckMdbVertion(const std::wstring& path);

  /// Whether the open project is priced by bill items, and its path (empty: none is open).
  bool IsQdMode() const { return isQdMode_; }
  const std::wstring& GetDbPath() const { return dbPath_; }

  // The result sets, each read on first use. A failed read counts as loaded and leaves the set
  // empty; a read that raises leaves it unread.
  const KorDMRec::SKorDMDetailResultData& GetXhlDetailData();
  const KorDMRec::SKorDMResultData& GetXhlHzData();
  const KorDMRec::SKorDMResultData& GetXhlGlData();
  const KorDMRec::SKorDMResultData& GetXhlCgData();
  const KorDMRec::SKorDMPjResultData& GetPjHzData();
  /// Opens the project's bill and quota libraries as well.
  const KorDMRec::SKorDMQdDeResultData& GetQdDeHzData();

  const std::vector<KorDMRec::SKorDMAllSmallIndexRec>& GetSmallIndexTree() const;
  const std::vector<KorDMRec::SKorDMAllSysCodeRec>& GetSysCodeTree() const;
  const std::vector<KorDMRec::SKorDMFloorRec>& GetFloorTree() const;
  /// The names of the construction sections.
  const std::vector<std::wstring>& GetSgdNameTree() const;

  /// Sort number of a component kind by its path "category\kind" (table all_small_index);
  /// kUnknownSortId for an unknown discipline or path.
  int GetCategorySortId(std::wstring_view spec, std::wstring_view path) const;
  /// Sort number of the first path of the discipline, in text order, that begins with `category`.
  int GetBigCategorySortId(std::wstring_view spec, std::wstring_view category) const;
  /// Sort number and remark of a system code by its path, joined by "\" (table all_sys_code).
  int GetSysCodeSortId(std::wstring_view spec, std::wstring_view path) const;
  std::wstring GetSysCodeRemark(std::wstring_view spec, std::wstring_view path) const;
  /// Both at once, for the fold; null for an unknown discipline or path.
  struct SSysCodeEntry {
    int sortId;
    std::wstring remark;
  };
  const SSysCodeEntry* FindSysCode(std::wstring_view spec, std::wstring_view path) const;
  /// The text, kept until the project is closed: what the trees of all reports have in common.
  const std::wstring& KeepText(std::wstring_view text);

  /// The marks of a bill item, a line "name: value" each; empty where it has none.
  std::wstring GetQdFeather(const std::wstring& code);
  /// Chapter name of a bill code or quota code, "其他章" where it is unknown; `number` becomes the
  /// chapter's number, and stays as it came where the library gives none. Meaningful once
  /// GetQdDeHzData was called.
  std::wstring GetQdChapter(const std::wstring& code, int& number);
  std::wstring GetDeChapter(const std::wstring& code, int& number);

  /// Whether a report has data in a discipline, as a host has said; true until it has.
  bool GetSpecReportHasData(const std::wstring& spec, const std::wstring& report) const;
  void SetSpecReportHasData(const std::wstring& spec, const std::wstring& report, bool hasData);

  /// Appends the names of the disciplines of the report's result set, in stored order. Loads the
  /// set if need be; a type without a set appends nothing.
  void GetReportSpecAry(Report::CellArray& cells, Report::EReportType type);

 private:
  template <class TData>
  struct SLazySet {
    bool loaded = false;
    TData data;
  };
  struct SChapter {
    int number;
    std::wstring name;
  };
  template <class TValue>
  using TextMap = std::map<std::wstring, TValue, std::less<>>;

  CTallyDataMng() = default;

  template <class TData, class TRead>
  const TData& Load(SLazySet<TData>& set, TRead&& read);
  template <class TRead>
  std::wstring GetChapter(TextMap<SChapter>& cache, const std::wstring& code, int& number,
                          TRead&& read);
  void ClearData();
  void InitAllTreeData();
  void CreateCategorySortIdMap();
  void CreateSysCodeSortIdMap();
  void OpenLibraries() const;

  bool isQdMode_ = true;
  std::wstring dbPath_;
  SLazySet<KorDMRec::SKorDMDetailResultData> detail_;
  SLazySet<KorDMRec::SKorDMResultData> hz_;
  SLazySet<KorDMRec::SKorDMResultData> gl_;
  SLazySet<KorDMRec::SKorDMResultData> cg_;
  SLazySet<KorDMRec::SKorDMPjResultData> pj_;
  SLazySet<KorDMRec::SKorDMQdDeResultData> qdDe_;
  TextMap<TextMap<int>> categorySortIds_;
  TextMap<TextMap<SSysCodeEntry>> sysCodeSortIds_;
  std::set<std::wstring, std::less<>> keptTexts_;
  std::vector<KorDMRec::SKorDMAllSmallIndexRec> smallIndexTree_;
  std::vector<KorDMRec::SKorDMAllSysCodeRec> sysCodeTree_;
  std::vector<KorDMRec::SKorDMFloorRec> floorTree_;
  std::vector<std::wstring> sgdNameTree_;
  TextMap<TextMap<bool>> specReportHasData_;
  TextMap<SChapter> qdChapters_;
  TextMap<std::wstring> qdFeatures_;
  TextMap<SChapter> deChapters_;
};

#endif  // TALLY_RESULT_STORE_TALLY_DATA_MNG_H_

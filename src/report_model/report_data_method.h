// The static operations of all reports: node look-ups, the rules of texts and quantities, and the
// flattening of ordered blocks. None keeps any state.
#ifndef TALLY_REPORT_MODEL_REPORT_DATA_METHOD_H_
#define TALLY_REPORT_MODEL_REPORT_DATA_METHOD_H_

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/report_data_node.h"
#include "report_model/report_types.h"
#include "report_model/row_results.h"
#include "report_model/sys_code_path.h"
#include "result_store/db_records.h"

/// Levels of a system code path that the engine knows.
inline constexpr int SYSCODE_LEVEL_COUNT = 3;

class CReportDataMethod {
 public:
  // Node look-ups -----------------------------------------------------------------------------
  //
  // Each finds the child with the right key in `children` or creates it, and answers a pointer that
  // the map owns. Null where the key holds a node of another class; nothing has then changed. The
  // keys are told at the node classes.

  static CReportSpec* GetSpec(Report::NodeMap& children, const KorDMRec::SKorDMSpecRec& record);
  /// Floors, calculation items and results refer to the texts of the records. REQUIRES: these
  /// outlive the node.
  static CReportFloor* GetFloor(Report::NodeMap& children, const KorDMRec::SKorDMFloorRec& record);
  static CReportFloor* GetFloor(Report::NodeMap& children,
                                KorDMRec::SKorDMFloorRec&& record) = delete;
  /// `category` is kept by a new node alone.
  static CReportType* GetType(Report::NodeMap& children, const std::wstring& category,
                              const std::wstring& name);
  /// The type of the calculation books: named by CReportTypeData::GetCategoryType, `category` the
  /// record's path.
  static CReportType* GetType(Report::NodeMap& children, const KorDMRec::SKorDMSpecRec& spec,
                              const KorDMRec::SKorDMCategoryRec& record);
  static CReportCategory* GetCategory(Report::NodeMap& children, const std::wstring& spec,
                                      const std::wstring& category, const std::wstring& kind);
  static CReportCategory* GetCategory(Report::NodeMap& children, const std::wstring& spec,
                                      const KorDMRec::SKorDMCategoryRec& record);
  /// One level of a system code, filed under `name`. Its sort number is that of `fullName` up to
  /// the first "\*".
  static CReportSysCode* GetSysCodeNode(Report::NodeMap& children, const std::wstring& spec,
                                        const std::wstring& name, const std::wstring& fullName);
  static CReportSysCode* GetSysCodeNode(Report::NodeMap& children, const SSysCodeStep& step);
  /// A chain of nodes, one for each level of the record's path as GetSysCodeName completes it;
  /// answers the deepest. Null for an empty path.
  static CReportSysCode* GetSysCode(Report::NodeMap& children, const std::wstring& spec,
                                    const KorDMRec::SKorDMSysCodeRec& record);
  /// The same for a path that was taken apart earlier.
  static CReportSysCode* GetSysCode(Report::NodeMap& children,
                                    const std::vector<SSysCodeStep>& path);
  /// Filed under `name` + `value`.
  static CReportAttribute* GetAttribute(Report::NodeMap& children, const std::wstring& name,
                                        const std::wstring& value);
  /// Filed under the record's `name` alone; the first record's `value` stays.
  static CReportAttribute* GetAttribute(Report::NodeMap& children,
                                        const KorDMRec::SKorDMAttrRec& record);
  /// Filed under and named by GetPipeLineName of the record's two texts.
  static CReportAttribute* GetPjAttribute(Report::NodeMap& children, const std::wstring& spec,
                                          const std::wstring& category,
                                          const KorDMRec::SKorDMAttrRec& record);
  static CReportCalItem* GetCalItem(Report::NodeMap& children,
                                    const KorDMRec::SKorDMCalItemRec& record);
  static CReportCalItem* GetCalItem(Report::NodeMap& children,
                                    KorDMRec::SKorDMCalItemRec&& record) = delete;
  static CReportCalItem* GetCalItem(Report::NodeMap& children,
                                    const KorDMRec::SKorDMCalItemDetailQRec& record);
  static CReportCalItem* GetCalItem(Report::NodeMap& children,
                                    KorDMRec::SKorDMCalItemDetailQRec&& record) = delete;
  static CReportPjCalItem* GetPjCalItem(Report::NodeMap& children,
                                        const KorDMRec::SKorDMPjCalItemRec& record);
  static CReportPjCalItem* GetPjCalItem(Report::NodeMap& children,
                                        KorDMRec::SKorDMPjCalItemRec&& record) = delete;
  /// The three result look-ups add the component's name to the node's `components`, found or new.
  static CReportResult* GetResult(Report::NodeMap& children, const std::wstring& sgdName,
                                  const KorDMRec::SKorDMFloorRec& floor,
                                  const KorDMRec::SKorDMCalItemRec& item,
                                  const KorDMRec::SKorDMComponentRec& component);
  static CReportResultDetail* GetResultDetail(Report::NodeMap& children,
                                              const std::wstring& sgdName,
                                              const KorDMRec::SKorDMFloorRec& floor,
                                              const KorDMRec::SKorDMCalItemDetailQRec& item,
                                              const KorDMRec::SKorDMComponentRec& component);
  /// A fitting's result counts one for each component: its `quantity` is 1. Filed under
  /// `sgdName` + floor text.
  static CReportResult* GetPjResult(Report::NodeMap& children, const std::wstring& sgdName,
                                    const KorDMRec::SKorDMFloorRec& floor,
                                    const KorDMRec::SKorDMPjCalItemRec& item,
                                    const KorDMRec::SKorDMComponentRec& component);
  /// Where a result is looked for.
  enum class EResultPlace {
    Anywhere,
    BehindAll,  ///< it is new, and its key stands behind those of all children: no look-up
  };
  /// The same three without a component: the caller adds them.
  static CReportResult* GetResult(Report::NodeMap& children, const std::wstring& sgdName,
                                  const KorDMRec::SKorDMFloorRec& floor,
                                  const KorDMRec::SKorDMCalItemRec& item, EResultPlace place);
  static CReportResultDetail* GetResult(Report::NodeMap& children, const std::wstring& sgdName,
                                        const KorDMRec::SKorDMFloorRec& floor,
                                        const KorDMRec::SKorDMCalItemDetailQRec& item,
                                        EResultPlace place);
  static CReportResult* GetResult(Report::NodeMap& children, const std::wstring& sgdName,
                                  const KorDMRec::SKorDMFloorRec& floor,
                                  const KorDMRec::SKorDMPjCalItemRec& item, EResultPlace place);
  /// The key that they file under; views the arguments' texts.
  static CNodeKey GetResultKey(std::wstring_view sgdName, const KorDMRec::SKorDMFloorRec& floor,
                               const KorDMRec::SKorDMCalItemRec& item);
  static CNodeKey GetResultKey(std::wstring_view sgdName, const KorDMRec::SKorDMFloorRec& floor,
                               const KorDMRec::SKorDMCalItemDetailQRec& item);
  static CNodeKey GetResultKey(std::wstring_view sgdName, const KorDMRec::SKorDMFloorRec& floor,
                               const KorDMRec::SKorDMPjCalItemRec& item);
  static CReportBrushPaint* GetBrushPaint(Report::NodeMap& children, int number1, int number2,
                                          const std::wstring& text1, const std::wstring& text2);
  static CReportDuctHType* GetDuctHType(Report::NodeMap& children, const std::wstring& text1,
                                        const std::wstring& text2, const std::wstring& text3);
  static CReportPipeJRBW* GetPipeJRBW(Report::NodeMap& children, const std::wstring& text1,
                                      const std::wstring& text2, const std::wstring& text3);
  /// The chapter of the record's code, from the bill library (`isQd`) or the quota library.
  static CReportChapter* GetChapter(Report::NodeMap& children,
                                    const KorDMRec::SKorDMQdDeRec& record, bool isQd);
  /// With `isQd` the node's `feature` is CTallyDataMng::GetQdFeather of the code.
  static CReportQdDeItem* GetQdDeItem(Report::NodeMap& children,
                                      const KorDMRec::SKorDMQdDeRec& record, bool isQd);

  /// Descends from `node` by one exact key for each of `parts`, through system code nodes alone.
  /// Null where `node` is null, `parts` is empty or a step finds no system code.
  static const CReportSysCode* FindSysCodeItem(const IReportDataNode* node,
                                               const std::vector<std::wstring>& parts);

  // Texts -------------------------------------------------------------------------------------

  /// The calculation item that a report totals: "保温体积" for the insulation table, else empty.
  static std::wstring GetTypeCalItem(Report::EReportType type);
  /// System code levels that an expansion level opens: 3 and 4 give 1 and 2, 5 and 6 give 3.
  static int GetExpandSysCodeLevel(Report::ELevelType level);
  /// A path of other than three levels is completed by "\*" and its last level: "A" gives "A\*A".
  static std::wstring GetSysCodeName(const std::wstring& path);
  /// The same with "&" between the levels: "A&B" gives "A&B&*B".
  static std::wstring GetNewSysCodeName(const std::wstring& path);
  /// Number of levels, without a last one that begins with "*".
  static int GetSysCodeLevel(const std::wstring& path);
  /// The first `level` levels; the path as it stands for level 3.
  static std::wstring GetSysCodeLevelName(std::wstring_view path, int level);
  /// The remark of the path up to its first "\*", in round brackets; empty where there is none.
  static std::wstring GetSysCodeRemark(const std::wstring& spec, const std::wstring& path);
  /// Looks for the first line of `text` that begins with `prefix` and stores it in `line`. True,
  /// with what follows its first colon in `value`, if it has a colon. Without such a line both
  /// stay.
  static bool GetAttParamValue(std::wstring& value, std::wstring& line, const std::wstring& text,
                               const std::wstring& prefix);
  /// What follows the first colon of the first line that holds `key` anywhere; the whole line where
  /// it has no colon; empty where there is no such line.
  static std::wstring GetValue(const Report::CellArray& lines, const std::wstring& key);
  /// Appends the floors that a floor expression stands for; true for a range or a list.
  static bool GetIsBzcContainFloorAry(Report::CellArray& floors, const std::wstring& text);
  /// How many floors GetIsBzcContainFloorAry appends, without making them; at most 2147483647.
  static int GetFloorCount(std::wstring_view text);
  /// Compares the runs of digits and points that begin at `start`: -1 where a's number is greater,
  /// 0 where the runs are equal as texts, else 1. REQUIRES: start within both texts.
  static int NumSmall(const std::string& a, const std::string& b, int start);
  /// CompareNatural of the narrow forms of two texts.
  static int AttSort(const std::wstring& a, const std::wstring& b, bool ascending);
  /// The report of a display name; ReportNone for any other text.
  static Report::EReportType GetTypeByName(const std::wstring& title);
  /// Appends two cells: the unit, the quantity ("%g").
  static void GetItemQuantity(Report::CellArray& cells, const Report::SResultData& result);
  /// Appends three cells: the unit, the quantity ("%g"), the references.
  static void GetSysItemQ(Report::CellArray& cells, const Report::SResultData& result);
  /// Adds quantity and references of `source` where the units are equal; otherwise nothing, which
  /// is intended: a sum keeps to its unit.
  static void UnionItemQuantity(Report::SResultData& target, const Report::SResultData& source);
  /// Display name of a fitting's pipe line.
  static std::wstring GetPipeLineName(const std::wstring& name, const std::wstring& attributes,
                                      const std::wstring& spec, const std::wstring& kind);
  /// Name of the project's first floor whose floor text is `floor`; empty where there is none.
  static std::wstring GetEngFloor(const std::wstring& floor);
  /// Appends one set of names for each system code level that occurs in `paths`; `levels` is not
  /// cleared.
  static void GetFJSysCodeVec(const std::vector<std::wstring>& paths,
                              std::vector<std::set<std::wstring, std::less<>>>& levels);

  // Flattening --------------------------------------------------------------------------------
  //
  // Each moves the blocks of a set behind `out`, in the set's order, with nothing between them. The
  // set is empty afterwards.

  static void ChangeFloorResult(CCellBlock& out, std::set<CFloorResultData>&& blocks);
  static void ChangeSysResult(CCellBlock& out, std::set<CFloorResultData>&& blocks);
  static void ChangeSysResult(CCellBlock& out, std::set<CSysResultData>&& blocks);
  static void ChangeTypeResult(CCellBlock& out, std::set<CTypeResultData>&& blocks);
  static void ChangeCategoryResult(CCellBlock& out, std::set<CCategoryResultData>&& blocks);
  static void ChangeCalItemResult(CCellBlock& out, std::set<CCalItemResultData>&& blocks);
  static void ChangeAttResult(CCellBlock& out, std::set<CAttResultData>&& blocks);
  static void ChangeChapterResult(CCellBlock& out, std::set<CChapterData>&& blocks);
  static void ChangeBrushPaintResult(CCellBlock& out, std::set<CBrushPaintData>&& blocks);
  static void ChangeQDDEResult(CCellBlock& out, std::set<CQDDEData>&& blocks);
};

#endif  // TALLY_REPORT_MODEL_REPORT_DATA_METHOD_H_

// Every report over arbitrary records: it is folded and asked with arbitrary conditions. The rows
// follow the report's layout, and the same request has the same answer.
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "fake_services.h"
#include "filter_trees/category_tree.h"
#include "filter_trees/floor_tree.h"
#include "filter_trees/sys_code_tree.h"
#include "fuzz_check.h"
#include "fuzz_input.h"
#include "host/report_catalog.h"
#include "report_mng/report_mng.h"
#include "rows/row_layouts.h"

namespace {

using namespace KorDMRec;
using tally_test::SProjectRecords;
using Words = std::span<const wchar_t* const>;

// What makes the reports take different paths; an input has texts of its own besides.
constexpr const wchar_t* kSpecs[] = {L"给排水", L"电气", L"暖通", L"消防", L""};
constexpr const wchar_t* kCategories[] = {L"管道", L"穿管引线", L"风管", L"通风管道", L"设备", L""};
constexpr const wchar_t* kKinds[] = {L"给水管", L"配管", L"风管", L"电线", L"阀门", L""};
constexpr const wchar_t* kFloors[] = {L"1",    L"2",    L"-1", L"2,4",          L"1/3/5",
                                      L"3，9", L"屋面", L"0",  L"1,2147483647", L""};
constexpr const wchar_t* kAttributes[] = {L"DN25",
                                          L"DN100",
                                          L"DN025",
                                          L"材质:钢\n绝热材质:岩棉\n绝热厚度:30\n刷油:红丹二遍",
                                          L"类型:矩形\n材质:镀锌\n厚度:0.5\n保温材质:橡塑",
                                          L"材质:PVC\n连接方式:粘接\n样式:正三通",
                                          L"@F",
                                          L""};
constexpr const wchar_t* kSysCodes[] = {L"A", L"A\\B", L"A\\B\\C", L"A\\B\\C\\D", L"*", L"\\", L""};
constexpr const wchar_t* kItems[] = {L"管道长度", L"风管面积", L"保温体积", L"刷油面积",
                                     L"电线长度", L"数量",     L"展开面积", L""};
constexpr const wchar_t* kUnits[] = {L"m", L"m2", L"m3", L"个", L""};
constexpr const wchar_t* kFormulas[] = {L"1.5+2", L"3*2", L"-1", L"(1)", L""};
constexpr const wchar_t* kCodes[] = {L"030801001001", L"030801", L"C8-1", L"C8-10", L"8-1.0", L""};
constexpr const wchar_t* kSections[] = {L"一区", L"二区", L""};

std::wstring Code(CFuzzInput& input) {
  return input.Word(kCodes);
}

int Number(CFuzzInput& input) {
  return input.Flag() ? static_cast<int>(input.Byte()) : input.Int();
}
double Quantity(CFuzzInput& input) {
  return input.Flag() ? input.Double() : static_cast<double>(input.Byte()) / 4;
}

/// Up to three records, each made by `make`.
template <class TRecord, class TMake>
void Fill(CFuzzInput& input, std::vector<TRecord>& records, TMake make) {
  for (std::size_t count = input.Below(4); count > 0; --count) {
    records.push_back(make());
  }
}

void FillTrees(CFuzzInput& input, SProjectRecords& records) {
  Fill(input, records.smallIndex, [&] {
    SKorDMAllSmallIndexRec record;
    record.sortId = Number(input);
    record.spec = input.Word(kSpecs);
    record.bigCategory = input.Word(kCategories);
    record.path = record.bigCategory + L"\\" + input.Word(kKinds);
    return record;
  });
  Fill(input, records.sysCodes, [&] {
    SKorDMAllSysCodeRec record;
    record.sortId = Number(input);
    record.spec = input.Word(kSpecs);
    record.sysCode = input.Word(kSysCodes);
    record.remark = input.Word(kFormulas);
    return record;
  });
  Fill(input, records.floors, [&] {
    return SKorDMFloorRec{1, input.Word(kFloors), input.Word(kFloors)};
  });
  Fill(input, records.sgdNames, [&] { return input.Word(kSections); });
}

/// Dictionaries that several sets share.
template <class TCalItem>
void FillDictionaries(CFuzzInput& input, TKorDMDictionaries<TCalItem>& set) {
  Fill(input, set.sgds, [&] { return SKorDMSgdRec{1, input.Word(kSections), {}}; });
  Fill(input, set.floors, [&] {
    return SKorDMFloorRec{1, input.Word(kFloors), input.Word(kFloors)};
  });
  Fill(input, set.specs, [&] { return SKorDMSpecRec{1, input.Word(kSpecs)}; });
  Fill(input, set.categories, [&] {
    return SKorDMCategoryRec{1, input.Word(kCategories), input.Word(kKinds)};
  });
  Fill(input, set.attrs, [&] {
    return SKorDMAttrRec{1, input.Word(kAttributes), input.Word(kAttributes)};
  });
  Fill(input, set.sysCodes, [&] { return SKorDMSysCodeRec{1, input.Word(kSysCodes)}; });
  Fill(input, set.components, [&] { return SKorDMComponentRec{1, input.Word(kSections), {}}; });
}

SKorDMCalItemRec CalItem(CFuzzInput& input) {
  SKorDMCalItemRec item;
  item.name = input.Word(kItems);
  item.unit = input.Word(kUnits);
  item.quantity = Quantity(input);
  item.expression = input.Word(kFormulas);
  return item;
}

SKorDMCalItemDetailQRec DetailItem(CFuzzInput& input) {
  SKorDMCalItemDetailQRec item;
  item.name = input.Word(kItems);
  item.unit = input.Word(kUnits);
  item.quantity1 = Quantity(input);
  item.quantity2 = Quantity(input);
  item.quantity3 = Quantity(input);
  item.quantity4 = item.quantity1;
  item.expression = input.Word(kFormulas);
  return item;
}

SKorDMPjCalItemRec PjItem(CFuzzInput& input) {
  return {1, input.Word(kFormulas), input.Word(kAttributes), input.Word(kUnits), 1};
}

SKorDMQdDeRec QdDe(CFuzzInput& input) {
  return {1, Code(input), input.Word(kItems), input.Word(kUnits), Code(input)};
}

/// The indices of rows, and whether all of them were good.
class CRowMaker {
 public:
  explicit CRowMaker(CFuzzInput& input) : input_(input) {}
  bool AreAllGood() const { return areAllGood_; }

  template <class TData, class TRow>
  void FillShared(TRow& row, const TData& data) {
    row.sgd = Index(data.sgds.size());
    row.floor = Index(data.floors.size());
    row.component = Index(data.components.size());
    row.spec = Index(data.specs.size());
    row.category = Index(data.categories.size());
    row.attr = Index(data.attrs.size());
    row.sysCode = Index(data.sysCodes.size());
    row.calItem = Index(data.calItems.size());
  }

  template <class TData>
  void Rows(TData& data) {
    for (std::size_t count = input_.Below(8); count > 0; --count) {
      FillShared(data.rows.emplace_back(), data);
    }
  }

  void Rows(SKorDMQdDeResultData& data) {
    for (std::size_t count = input_.Below(8); count > 0; --count) {
      SKorDMQdDeRow& row = data.rows.emplace_back();
      row.isQd = input_.Flag();
      FillShared(row, data);
      row.qdItem = Index(data.qdItems.size());
      row.deItem = Index(data.deItems.size());
    }
  }

 private:
  int Index(std::size_t size) {
    const unsigned byte = input_.Byte();
    if (byte == 0xFF || size == 0) {
      const int index = input_.Int();
      areAllGood_ = areAllGood_ && index >= 0 && static_cast<std::size_t>(index) < size;
      return index;
    }
    return static_cast<int>(byte % size);
  }

  CFuzzInput& input_;
  bool areAllGood_ = true;
};

template <class TFrom, class TTo>
void CopyDictionaries(const TKorDMDictionaries<TFrom>& from, TKorDMDictionaries<TTo>& to) {
  to.sgds = from.sgds;
  to.floors = from.floors;
  to.specs = from.specs;
  to.categories = from.categories;
  to.attrs = from.attrs;
  to.sysCodes = from.sysCodes;
  to.components = from.components;
}

/// Fills `records`; true where every row's indices are good.
bool FillRecords(CFuzzInput& input, SProjectRecords& records) {
  FillTrees(input, records);
  FillDictionaries(input, records.hz);
  CopyDictionaries(records.hz, records.gl);
  CopyDictionaries(records.hz, records.cg);
  CopyDictionaries(records.hz, records.detail);
  CopyDictionaries(records.hz, records.pj);
  CopyDictionaries(records.hz, records.qdDe);
  Fill(input, records.hz.calItems, [&] { return CalItem(input); });
  records.gl.calItems = records.hz.calItems;
  records.cg.calItems = records.hz.calItems;
  records.qdDe.calItems = records.hz.calItems;
  Fill(input, records.detail.calItems, [&] { return DetailItem(input); });
  Fill(input, records.pj.calItems, [&] { return PjItem(input); });
  Fill(input, records.qdDe.qdItems, [&] { return QdDe(input); });
  Fill(input, records.qdDe.deItems, [&] { return QdDe(input); });
  CRowMaker maker(input);
  maker.Rows(records.hz);
  records.gl.rows = records.hz.rows;
  records.cg.rows = records.hz.rows;
  maker.Rows(records.detail);
  maker.Rows(records.pj);
  maker.Rows(records.qdDe);
  return maker.AreAllGood();
}

void FillLibraries(CFuzzInput& input, const CFakeServices& services) {
  for (std::size_t count = input.Below(4); count > 0; --count) {
    const std::wstring code = Code(input);
    tally_test::SFakeChapter chapter;
    if (input.Flag()) {
      chapter.number = Number(input);
    }
    chapter.text = input.Word(kSysCodes);
    services.quotaLibrary->chapters[code] = chapter;
    services.billLibrary->chapters[code] = chapter;
    services.settings->marks[code] = {input.Word(kItems), input.Word(kFormulas), L""};
  }
}

Report::SNewCondition Condition(CFuzzInput& input) {
  Report::SNewCondition condition;
  Fill(input, condition.floors, [&] {
    return Report::SFloorPair{input.Word(kFloors), input.Word(kFloors)};
  });
  Fill(input, condition.sysCodes, [&] { return input.Word(kSysCodes); });
  for (std::size_t count = input.Below(4); count > 0; --count) {
    std::wstring category = input.Word(kCategories);
    if (input.Flag()) {
      category += L"\\" + input.Word(kKinds);
    }
    condition.categories.insert(std::move(category));
  }
  return condition;
}

void SetState(CFuzzInput& input) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  status->SetIsBySgd(input.Flag());
  status->SetIsDividedNode(input.Flag());
  std::vector<std::wstring> sections;
  Fill(input, sections, [&] { return input.Word(kSections); });
  status->SetDispSgd(sections);
  CResultConfig::Instance()->SetLineSortDowm(input.Flag());
}

Report::CellArray Ask(IReport& report, const SCatalogReport& entry, const SRowRequest& request) {
  Report::CellArray cells = {L"kept"};
  entry.appendRows(report, request, cells);
  Require(!cells.empty() && cells[0] == L"kept", "rows are appended");
  cells.erase(cells.begin());
  return cells;
}

void CheckRequest(CFuzzInput& input, bool areAllGood) {
  constexpr int kCodePages[] = {936, 1252, 54936, 65001};
  const SCatalogReport& entry = ReportCatalog()[input.Below(ReportCatalog().size())];
  SRowRequest request;
  request.spec = input.Word(kSpecs);
  request.condition = Condition(input);
  request.level = input.Flag() ? static_cast<int>(input.Below(8)) : input.Int();
  request.bySgd = static_cast<int>(input.Below(3));
  request.totalType = static_cast<Report::EReportType>(input.Below(13));
  CReportMng* reports = CReportMng::Instance();
  try {
    IReport* report = reports->GetReportData(entry.type, entry.variant);
    Require(report != nullptr, "every report of the catalogue exists");
    const Report::CellArray cells = Ask(*report, entry, request);
    CutRows(entry.type, entry.variant, cells);
    ICodePage::Instance()->SetThreadCodePage(kCodePages[input.Below(std::size(kCodePages))]);
    Require(Ask(*report, entry, request) == cells, "the same request has the same answer");
    ICodePage::Instance()->SetThreadCodePage(936);
    reports->Clear();
    Require(Ask(*reports->GetReportData(entry.type, entry.variant), entry, request) == cells,
            "a report that is folded anew has the same answer");
  } catch (const std::out_of_range&) {
    Require(!areAllGood, "only a bad index is out of range");
  }
}

void CheckTrees() {
  CReportMng* reports = CReportMng::Instance();
  const auto& floors = dynamic_cast<CFloorTree&>(*reports->GetTreeData(Report::TreeFloor));
  Require(floors.GetFloorData().size() <= CTallyDataMng::Instance()->GetFloorTree().size(),
          "floors are the project's");
  CSpecTextTree::SpecTextMap map;
  dynamic_cast<CSysCodeTree&>(*reports->GetTreeData(Report::TreeSysCode)).GetSysCodeMap(map);
  dynamic_cast<CCategoryTree&>(*reports->GetTreeData(Report::TreeCategory)).GetCategoryMap(map);
  Report::CellArray specs;
  for (const SCatalogReport& entry : ReportCatalog()) {
    CTallyDataMng::Instance()->GetReportSpecAry(specs, entry.type);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CFakeServices services;
  CFuzzInput input(data, size);
  services.settings->qdDeMode = static_cast<int>(input.Below(2));
  const bool isQdMode = input.Flag();
  SetState(input);
  SProjectRecords records;
  const bool areAllGood = FillRecords(input, records);
  FillLibraries(input, services);
  services.Open(std::move(records), isQdMode);
  CheckTrees();
  constexpr int kMostRequests = 6;
  for (int i = 0; i == 0 || (i < kMostRequests && !input.AtEnd()); ++i) {
    CheckRequest(input, areAllGood);
  }
  return 0;
}

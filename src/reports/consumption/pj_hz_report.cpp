#include "reports/consumption/pj_hz_report.h"

#include <array>
#include <cstddef>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "report_mng/result_config.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/repeated_find.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/section_choice.h"
#include "reports/shared/text_places.h"
#include "result_store/tally_data_mng.h"

namespace {

// One row element. The texts belong to the tree and to the request.
struct SPjHzData {
  bool LineSortDown = false;
  int FloorSortId = 0;
  int FloorGrade = 0;  // of the Floor text
  int SysCodeSortId = 0;
  int CategorySortId = 0;
  std::wstring_view Floor;
  std::wstring_view FloorName;
  std::wstring_view SysCode;
  const CReportCategory* Category = nullptr;
  const CReportAttribute* Attribute = nullptr;
  const CReportPjCalItem* Item = nullptr;
  // No part of the key.
  mutable double Quantity = 0;
  mutable std::vector<const CReportResult*> References;

  bool operator<(const SPjHzData& other) const {
    if (FloorSortId != other.FloorSortId) {
      return FloorSortId < other.FloorSortId;
    }
    // Texts that differ are told apart by a number alone here: equal numbers merge.
    if (FloorGrade != other.FloorGrade) {
      return FloorGrade < other.FloorGrade;
    }
    if (Floor != other.Floor) {
      return false;
    }
    if (SysCodeSortId != other.SysCodeSortId) {
      return SysCodeSortId < other.SysCodeSortId;
    }
    if (Category != other.Category && Category->category != other.Category->category) {
      return CategorySortId < other.CategorySortId;
    }
    if (Attribute->places.ascending >= 0) {
      const auto place = LineSortDown ? &SAttPlaces::descending : &SAttPlaces::ascending;
      if (Attribute->places.*place != other.Attribute->places.*place) {
        return Attribute->places.*place < other.Attribute->places.*place;
      }
    } else if (Attribute->name != other.Attribute->name) {
      return CompareNatural(Attribute->sortKey->narrowName, other.Attribute->sortKey->narrowName,
                            !LineSortDown) < 0;
    }
    return IsItemBefore(other);
  }

 private:
  bool IsItemBefore(const SPjHzData& other) const {
    if (Item->HasPlaces()) {
      return Item->places < other.Item->places;
    }
    if (Item->text1 != other.Item->text1) {
      return CompareAsNarrow(Item->text1, other.Item->text1) < 0;
    }
    if (Item->name != other.Item->name) {
      return CompareAsNarrow(Item->name, other.Item->name) < 0;
    }
    return CompareAsNarrow(Item->unit, other.Item->unit) < 0;
  }
};

// What a level shows of the system codes, for one request.
class CShownCodes {
 public:
  struct SCode {
    std::wstring text;  // with its remark
    int sortId = 0;
  };

  CShownCodes(const std::wstring& spec, int level) : spec_(spec), level_(level) {}

  const SCode& Of(const CReportSysCode& sysCode) {
    const auto [at, isNew] = codes_.try_emplace(sysCode.fullName);
    SCode& code = at->second;
    if (isNew && level_ > CPjHzReport::LevelFloor) {
      code.text = CReportDataMethod::GetSysCodeLevelName(sysCode.fullName,
                                                         CPjHzReport::GetSysCodeLevel(level_));
      const std::wstring path = code.text.substr(0, code.text.find(L"\\*"));
      code.sortId = CTallyDataMng::Instance()->GetSysCodeSortId(spec_, path);
      code.text += CReportDataMethod::GetSysCodeRemark(spec_, path);
    }
    return code;
  }

 private:
  const std::wstring& spec_;
  const int level_;
  std::unordered_map<std::wstring_view, SCode> codes_;  // by full name
};

// The elements of one pass.
class CFittings {
 public:
  CFittings(const Report::SNewCondition& condition, int level, const CSectionChoice& sections,
            CShownCodes& codes)
      : condition_(condition),
        level_(level),
        sections_(sections),
        sysCodes_(condition.sysCodes),
        codes_(codes) {}

  void AddFloor(const CReportFloor& floor, const CPickedFloor& picked) {
    SPjHzData element;
    element.LineSortDown = CResultConfig::Instance()->GetLineSortDowm();
    if (level_ != CPjHzReport::LevelItem) {
      element.FloorSortId = CFloorResultData::CalFloorGrade(floor.name);
      element.FloorName = floor.name;
    }
    ForEachCategoryBelow(
        sysCodes_, floor, condition_,
        [&](const CReportSysCode& holder, const CReportCategory& category) {
          const CShownCodes::SCode& code = codes_.Of(holder);
          element.SysCode = code.text;
          element.SysCodeSortId = code.sortId;
          element.CategorySortId = category.sortId;
          element.Category = &category;
          ForEachChild<CReportAttribute>(category.children, [&](const CReportAttribute& attribute) {
            element.Attribute = &attribute;
            ForEachChild<CReportPjCalItem>(attribute.children, [&](const CReportPjCalItem& item) {
              element.Item = &item;
              AddItem(element, picked);
            });
          });
        });
  }

  CCellBlock Rows() const {
    CCellBlock rows;
    std::vector<CCellSource> cells;
    std::wstring references;
    for (const SPjHzData& element : elements_) {
      cells.clear();
      if (!element.Floor.empty()) {
        cells.insert(cells.end(), {L"@F", element.FloorName, element.Floor});
      }
      if (!element.SysCode.empty()) {
        cells.insert(cells.end(), {L"@S", element.SysCode});
      }
      references.clear();
      for (const CReportResult* result : element.References) {
        result->AppendComponentText(references);
        references += L'$';
      }
      cells.insert(cells.end(),
                   {L"@Cg", element.Category->category, L"@A", element.Attribute->name, L"@CI",
                    element.Item->text1, element.Item->name, element.Item->unit, element.Quantity,
                    CCellSource::Copied(references)});
      rows.AddRow(cells);
    }
    return rows;
  }

 private:
  using Elements = std::set<SPjHzData>;

  void AddItem(SPjHzData& element, const CPickedFloor& picked) {
    TRepeatedFind<Elements> find;
    ForEachChild<CReportResult>(element.Item->children, [&](const CReportResult& result) {
      if (!sections_.Takes(result.sgdName) || !picked.Takes(result)) {
        return;
      }
      if (level_ != CPjHzReport::LevelItem && SetFloor(element, picked.TextFor(result))) {
        find = {};
      }
      result.PrefetchComponents();
      const double quantity = result.Quantity(picked.CountFor(result));
      auto at = find(elements_, element);
      if (at == elements_.end()) {
        // Where the ordering is not consistent, the set may refuse what was not found.
        bool isIn = false;
        std::tie(at, isIn) = elements_.insert(element);
        if (!isIn) {
          return;
        }
        at->Quantity = quantity;
      } else {
        at->Quantity += quantity;
      }
      at->References.push_back(&result);
    });
  }

  // True if it is another text than before.
  static bool SetFloor(SPjHzData& element, std::wstring_view floor) {
    if (element.Floor.data() == floor.data() && element.Floor.size() == floor.size()) {
      return false;
    }
    element.Floor = floor;
    element.FloorGrade = CFloorResultData::CalFloorGrade(std::wstring(floor));
    return true;
  }

  const Report::SNewCondition& condition_;
  const int level_;
  const CSectionChoice& sections_;
  CSysCodeWalk sysCodes_;
  CShownCodes& codes_;
  Elements elements_;
};

// Places the fittings by each of their texts.
void PlaceItems(const std::vector<CReportAttribute*>& attributes) {
  constexpr std::array kTexts{&CReportPjCalItem::text1, &CReportPjCalItem::name,
                              &CReportPjCalItem::unit};
  std::vector<CReportPjCalItem*> items;
  for (const CReportAttribute* attribute : attributes) {
    CollectNodes(attribute->children, items);
  }
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    CTextPlaces places;
    for (const CReportPjCalItem* item : items) {
      places.Add(item->*kTexts[i]);
    }
    places.Place(CTextPlaces::EOrder::Plain);
    for (CReportPjCalItem* item : items) {
      item->places[i] = places.Of(item->*kTexts[i]).ascending;
    }
  }
}

}  // namespace

int CPjHzReport::GetSysCodeLevel(int level) {
  return level >= LevelSysCode1 && level <= LevelSysCode3 ? level - LevelFloor : 0;
}

void CPjHzReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetPjHzData();
  CRowFolder fold(root, data);
  fold.Spec().Floor().SysCode().Category().PjAttribute().PjCalItem();
  for (const auto& row : data.rows) {
    fold.Add(row);
  }
  fold.Fold();
  PlaceItems(PlaceAttributeNames(root));
}

void CPjHzReport::GetPjHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                              const Report::SNewCondition& requestCondition, int level, int bySgd) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  CShownCodes codes(spec, level);
  RunSectionPasses(
      rows, bySgd,
      [&](const CSectionChoice& sections) {
        CFittings fittings(condition, level, sections, codes);
        ForEachChosenFloor<EPairKey::Floor>(
            node->children, condition.floors,
            [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring&,
                const std::wstring&) { fittings.AddFloor(floor, picked); });
        return fittings.Rows();
      },
      ESectionHeading::Always);
}

#include "reports/consumption/pj_hz_report.h"

#include <set>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "report_mng/result_config.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/section_choice.h"
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
    if (Floor != other.Floor) {
      return FloorGrade < other.FloorGrade;
    }
    if (SysCodeSortId != other.SysCodeSortId) {
      return SysCodeSortId < other.SysCodeSortId;
    }
    if (Category->category != other.Category->category) {
      return CategorySortId < other.CategorySortId;
    }
    if (Attribute->name != other.Attribute->name) {
      return CompareNatural(Attribute->sortKey->narrowName, other.Attribute->sortKey->narrowName,
                            !LineSortDown) < 0;
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

// The elements of one pass.
class CFittings {
 public:
  CFittings(const std::wstring& spec, const Report::SNewCondition& condition, int level,
            const CSectionChoice& sections)
      : spec_(spec), condition_(condition), level_(level), sections_(sections) {}

  void AddFloor(const CReportFloor& floor, const CPickedFloor& picked) {
    ForEachCategoryBelow(
        floor, condition_, [&](const CReportSysCode& holder, const CReportCategory& category) {
          SPjHzData element;
          element.LineSortDown = CResultConfig::Instance()->GetLineSortDowm();
          element.CategorySortId = category.sortId;
          element.Category = &category;
          FillFloor(element, floor);
          FillSysCode(element, holder);
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
    for (const SPjHzData& element : elements_) {
      if (!element.Floor.empty()) {
        rows.AddTexts(L"@F", element.FloorName, element.Floor);
      }
      if (!element.SysCode.empty()) {
        rows.AddTexts(L"@S", CCellSource::Copied(element.SysCode));
      }
      rows.AddTexts(L"@Cg", element.Category->category);
      rows.AddTexts(L"@A", element.Attribute->name);
      rows.AddTexts(L"@CI", element.Item->text1, element.Item->name, element.Item->unit,
                    NumberText(element.Quantity), Expression(element));
    }
    return rows;
  }

 private:
  void FillFloor(SPjHzData& element, const CReportFloor& floor) const {
    if (level_ != CPjHzReport::LevelItem) {
      element.FloorSortId = CFloorResultData::CalFloorGrade(floor.name);
      element.FloorName = floor.name;
    }
  }

  void FillSysCode(SPjHzData& element, const CReportSysCode& sysCode) {
    if (level_ <= CPjHzReport::LevelFloor) {
      return;
    }
    std::wstring text = CReportDataMethod::GetSysCodeLevelName(
        sysCode.fullName, CPjHzReport::GetSysCodeLevel(level_));
    const std::wstring path = text.substr(0, text.find(L"\\*"));
    element.SysCodeSortId = CTallyDataMng::Instance()->GetSysCodeSortId(spec_, path);
    text += CReportDataMethod::GetSysCodeRemark(spec_, path);
    element.SysCode = *texts_.insert(std::move(text)).first;
  }

  void AddItem(SPjHzData& element, const CPickedFloor& picked) {
    ForEachChild<CReportResult>(element.Item->children, [&](const CReportResult& result) {
      if (!sections_.Takes(result.sgdName) || !picked.Takes(result)) {
        return;
      }
      if (level_ != CPjHzReport::LevelItem) {
        element.Floor = picked.TextFor(result);
        element.FloorGrade = CFloorResultData::CalFloorGrade(std::wstring(element.Floor));
      }
      const double quantity =
          static_cast<double>(result.components.size()) * result.quantity * picked.CountFor(result);
      auto at = elements_.find(element);
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

  static std::wstring Expression(const SPjHzData& element) {
    std::wstring text;
    for (const CReportResult* result : element.References) {
      result->AppendComponentText(text);
      text += L'$';
    }
    return text;
  }

  const std::wstring& spec_;
  const Report::SNewCondition& condition_;
  const int level_;
  const CSectionChoice& sections_;
  std::set<SPjHzData> elements_;
  std::set<std::wstring> texts_;
};

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
}

void CPjHzReport::GetPjHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                              const Report::SNewCondition& requestCondition, int level, int bySgd) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  RunSectionPasses(
      rows, bySgd,
      [&](const CSectionChoice& sections) {
        CFittings fittings(spec, condition, level, sections);
        ForEachChosenFloor<EPairKey::Floor>(
            node->children, condition.floors,
            [&](const CReportFloor& floor, const CPickedFloor& picked, const std::wstring&,
                const std::wstring&) { fittings.AddFloor(floor, picked); });
        return fittings.Rows();
      },
      ESectionHeading::Always);
}

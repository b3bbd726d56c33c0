#include "reports/calculation_books/xhl_jss2f_report.h"

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "report_model/formula_text.h"
#include "report_model/report_data_method.h"
#include "reports/calculation_books/formula_sum.h"
#include "reports/shared/sys_code_walk.h"

namespace {

// The sum of one system code of the first level, for one floor.
struct SSysjssData {
  std::array<double, 4> Quantity{};
  int FloorCount = 1;  // floors that the first detail's floor text stands for
  std::vector<const CReportResultDetail*> Details;
};

using SysCodeSums = std::map<std::wstring, SSysjssData>;

void AddDetail(SSysjssData& sum, const CReportResultDetail& detail, const CPickedFloor& picked) {
  if (sum.Details.empty()) {
    sum.Quantity = ComponentQuantities(detail);
    sum.FloorCount = picked.CountFor(detail);
  } else {
    AddQuantities(sum.Quantity, ComponentQuantities(detail), 1);
  }
  sum.Details.push_back(&detail);
  detail.PrefetchComponents();
}

// The references of all details, each ended by one more "$".
std::wstring ReferencesOf(const SysCodeSums& sums) {
  std::size_t size = 0;
  for (const auto& [key, sum] : sums) {
    for (const CReportResultDetail* detail : sum.Details) {
      size += detail->ComponentTextSize() + 1;
    }
  }
  std::wstring references;
  references.reserve(size);
  for (const auto& [key, sum] : sums) {
    for (const CReportResultDetail* detail : sum.Details) {
      detail->AppendComponentText(references);
      references += L'$';
    }
  }
  return references;
}

std::unique_ptr<const SItemFigures> FiguresOf(const SysCodeSums& sums, bool isMain) {
  if (sums.empty()) {
    return nullptr;
  }
  // The first entry's count serves for all of them.
  const int floorCount = sums.begin()->second.FloorCount;
  auto figures = std::make_unique<SItemFigures>();
  for (const auto& [key, sum] : sums) {
    AddQuantities(figures->sums, sum.Quantity, floorCount);
    if (isMain) {
      AddTerm(figures->formula, sum.Quantity[0]);
    }
  }
  if (isMain && floorCount != 1) {
    figures->formula = MultipliedInBrackets(figures->formula, floorCount, L"层", L"+");
  }
  figures->references = ReferencesOf(sums);
  return figures;
}

}  // namespace

// Adds up calculation items of one floor.
class CXhlJss2FReport::CItemSums {
 public:
  /// Without sections it takes those of every section.
  CItemSums(const CSectionChoice* sections, CSysCodeWalk& sysCodes)
      : sections_(sections), sysCodes_(sysCodes) {}

  std::unique_ptr<const SItemFigures> Figures(const CReportCalItem& item, bool isMain,
                                              const CPickedFloor& picked) {
    SysCodeSums sums;
    sysCodes_.ForEachChosen(item, [&](const CReportSysCode& sysCode) {
      SSysjssData* sum = nullptr;
      sysCodes_.ForEachBelow(sysCode, [&](const auto&, const IReportDataNode& child) {
        const auto* detail = NodeAs<CReportResultDetail>(&child);
        if (detail != nullptr && Takes(*detail, picked)) {
          if (sum == nullptr) {
            // All codes below it share its first level.
            sum = &sums[CReportDataMethod::GetSysCodeLevelName(sysCode.fullName, s_iSysCodeLevel)];
          }
          AddDetail(*sum, *detail, picked);
        }
        return true;
      });
    });
    return FiguresOf(sums, isMain);
  }

 private:
  bool Takes(const CReportResultDetail& detail, const CPickedFloor& picked) const {
    return (sections_ == nullptr || sections_->Takes(detail.sgdName)) && picked.Takes(detail);
  }

  const CSectionChoice* sections_;
  CSysCodeWalk& sysCodes_;
};

void CXhlJss2FReport::CreatData() {
  FoldDetails([](auto& fold, bool isDivided) {
    fold.Spec().Floor();
    if (isDivided) {
      fold.Type();
    }
    fold.Category().Attribute().CalItem().SysCode();
  });
  CSysCodeWalk sysCodes({});
  CItemSums sums(nullptr, sysCodes);
  KeepFigures([&](const CReportCalItem& item, bool isMain) {
    return sums.Figures(item, isMain, CPickedFloor());
  });
}

void CXhlJss2FReport::GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                                    const Report::SNewCondition& requestCondition,
                                    int sectionMode) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  CSysCodeWalk sysCodes(condition.sysCodes);
  RunSectionPasses(rows, sectionMode, [&](const CSectionChoice& sections) {
    CItemSums sums(&sections, sysCodes);
    return FloorBlocks(*node, [&](const CReportFloor& floor, const CPickedFloor& picked) {
      const bool takesWhole = sysCodes.TakesAll() && sections.TakesAll() && !picked.IsOther();
      CCellBlock block;
      CCellBlock others;
      AddTypes(block, others, floor, [&](const IReportDataNode& parent, bool /*isLineWork*/) {
        return KindBlocks(parent.children, takesWhole ? ETake::Whole : ETake::Part,
                          [&](const CReportCalItem& item, bool isMain) {
                            return sums.Figures(item, isMain, picked);
                          });
      });
      block.Append(std::move(others));
      return block;
    });
  });
}

#include "reports/calculation_books/xhl_jss2f_report.h"

#include <array>
#include <cstddef>
#include <map>
#include <utility>

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"
#include "report_model/report_data_method.h"
#include "reports/calculation_books/formula_sum.h"
#include "reports/shared/node_choice.h"

namespace {

// The sum of one system code of the first level, for one floor.
struct SSysjssData {
  std::wstring Expression;  // references, each detail's ended by one more "$"
  std::array<double, 4> Quantity{};
  int FloorCount = 1;  // floors that the first detail's floor text stands for
};

}  // namespace

void CXhlJss2FReport::CreatData() {
  FoldDetails([](auto& fold, bool isDivided) {
    fold.Spec().Floor();
    if (isDivided) {
      fold.Type();
    }
    fold.Category().Attribute().CalItem().SysCode();
  });
}

void CXhlJss2FReport::GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                                    const Report::SNewCondition& requestCondition,
                                    int sectionMode) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  RunSectionPasses(rows, sectionMode, [&](const CSectionChoice& sections) {
    return FloorBlocks(*node, [&](const CReportFloor& floor, const CPickedFloor& picked) {
      CCellBlock block;
      CCellBlock others;
      AddTypes(block, others, floor, [&](const IReportDataNode& parent, bool /*isLineWork*/) {
        return KindBlocks(parent.children, [&](const CReportCalItem& item, bool isMain) {
          return CalItemRows(item, isMain, picked, sections);
        });
      });
      block.Append(std::move(others));
      return block;
    });
  });
}

CCellBlock CXhlJss2FReport::CalItemRows(const CReportCalItem& item, bool isMain,
                                        const CPickedFloor& picked,
                                        const CSectionChoice& sections) const {
  std::map<std::wstring, SSysjssData> sums;
  ForEachChosenSysCode(item, condition.sysCodes, [&](const CReportSysCode& sysCode) {
    // All codes below it share its first level.
    const std::wstring key =
        CReportDataMethod::GetSysCodeLevelName(sysCode.fullName, s_iSysCodeLevel);
    ForEachBelowSysCode(sysCode, [&](const CReportSysCode&, const IReportDataNode& child) {
      const auto* detail = NodeAs<CReportResultDetail>(&child);
      if (detail == nullptr || !sections.Takes(detail->sgdName) || !picked.Takes(*detail)) {
        return true;
      }
      const std::array<double, 4> quantities = ComponentQuantities(*detail);
      const auto [at, isNew] = sums.try_emplace(key);
      SSysjssData& sum = at->second;
      if (isNew) {
        sum.Quantity = quantities;
        sum.FloorCount = picked.CountFor(*detail);
      } else {
        for (std::size_t i = 0; i < quantities.size(); ++i) {
          sum.Quantity[i] += quantities[i];
        }
      }
      detail->AppendComponentText(sum.Expression);
      sum.Expression += L'$';
      return true;
    });
  });
  if (sums.empty()) {
    return {};
  }
  // The first entry's count serves for all of them.
  const int floorCount = sums.begin()->second.FloorCount;
  CFormulaSum total;
  std::wstring expression;
  for (const auto& [key, sum] : sums) {
    total.AddTerm(NumberText(sum.Quantity[0]));
    total.AddQuantities(sum.Quantity, floorCount);
    expression += sum.Expression;
  }
  std::wstring formula;
  if (isMain) {
    formula = floorCount == 1 ? total.Formula()
                              : MultipliedInBrackets(total.Formula(), floorCount, L"层", L"+");
  }
  return ItemRow(item, std::move(formula), std::move(expression), total.Sums());
}

#include "reports/bill_quota/bill_quota_report.h"

#include <set>
#include <utility>

#include "platform/text_numbers.h"
#include "report_model/report_data_method.h"
#include "reports/shared/category_blocks.h"

namespace {

void AddBillRow(CCellBlock& out, const CReportQdDeItem& bill, const std::wstring& unit,
                double quantity) {
  out.AddCells(L"@QD", bill.code, bill.name, bill.feature, unit, quantity);
}

void AddQuotaRow(CCellBlock& out, const CReportQdDeItem& quota, double quantity) {
  out.AddCells(L"@DE", quota.code, quota.name, quota.unit, quantity);
}

void PutItemBlock(std::set<CQDDEData>& blocks, const CReportQdDeItem& item, CCellBlock&& rows) {
  if (!rows.Empty()) {
    PutBlock(blocks, CQDDEData(item.code, item.name, item.feature, item.unit, std::move(rows)));
  }
}

}  // namespace

CCellBlock CBillQuotaReport::SpecRows(CSummaryWalk& walk, const CReportSpec& node) const {
  std::set<CChapterData> blocks;
  ForEachChild<CReportChapter>(node.children, [&](const CReportChapter& chapter) {
    CCellBlock rows = ChapterRows(walk, chapter);
    if (!rows.Empty()) {
      PutBlock(blocks, CChapterData(chapter.number, chapter.name, std::move(rows)));
    }
  });
  CCellBlock rows;
  CReportDataMethod::ChangeChapterResult(rows, std::move(blocks));
  return rows;
}

CCellBlock CBillQuotaReport::ChapterRows(CSummaryWalk& walk, const CReportChapter& chapter) const {
  std::set<CQDDEData> blocks;
  ForEachChild<CReportQdDeItem>(chapter.children, [&](const CReportQdDeItem& item) {
    PutItemBlock(blocks, item,
                 shape_.items == EChapterItems::BillsWithQuotas ? BillRows(walk, item)
                                                                : ItemRows(walk, item));
  });
  CCellBlock rows;
  if (!blocks.empty()) {
    if (shape_.showsChapterNumber) {
      rows.AddCells(L"@C", chapter.name, IntText(chapter.number));
    } else {
      rows.AddCells(L"@C", chapter.name);
    }
    CReportDataMethod::ChangeQDDEResult(rows, std::move(blocks));
  }
  return rows;
}

CCellBlock CBillQuotaReport::ItemRows(CSummaryWalk& walk, const CReportQdDeItem& item) const {
  double sum = 0;
  CCellBlock categories;
  CCellBlock rows;
  if (AddCategories(walk, sum, categories, item, walk.Request().level)) {
    if (shape_.items == EChapterItems::Bills) {
      AddBillRow(rows, item, item.unit, sum);
    } else {
      AddQuotaRow(rows, item, sum);
    }
    rows.Append(std::move(categories));
  }
  return rows;
}

// A bill's quantity is that of its own items, one row for each unit, and never that of its quotas.
CCellBlock CBillQuotaReport::BillRows(CSummaryWalk& walk, const CReportQdDeItem& bill) const {
  const int level = walk.Request().level;
  CCellBlock rows;
  std::set<CQDDEData> quotas;
  ForEachChild<CReportQdDeItem>(bill.children, [&](const CReportQdDeItem& item) {
    const bool isOwnItem = item.code.empty() && item.name.empty();
    double sum = 0;
    CCellBlock categories;
    if (!AddCategories(walk, sum, categories, item, isOwnItem ? 0 : level)) {
      return;
    }
    if (isOwnItem) {
      AddBillRow(rows, bill, item.unit, sum);
    } else if (level != 0) {
      CCellBlock quotaRows;
      AddQuotaRow(quotaRows, item, sum);
      quotaRows.Append(std::move(categories));
      PutItemBlock(quotas, item, std::move(quotaRows));
    }
  });
  CReportDataMethod::ChangeQDDEResult(rows, std::move(quotas));
  return rows;
}

bool CBillQuotaReport::AddCategories(CSummaryWalk& walk, double& sum, CCellBlock& out,
                                     const CReportQdDeItem& item, int level) const {
  bool counted = false;
  out.Append(
      CategoryBlocks(item.children, condition.categories, [&](const CReportCategory& category) {
        CCellBlock rows;
        counted |= AddCategory(walk, sum, rows, category, item.unit, level);
        return rows;
      }));
  return counted;
}

bool CBillQuotaReport::AddCategory(CSummaryWalk& walk, double& sum, CCellBlock& out,
                                   const CReportCategory& category, const std::wstring& unit,
                                   int level) const {
  double local = 0;
  bool counted = false;
  CCellBlock rows = AttributeBlocks(spec, category, [&](const CReportAttribute& attribute) {
    CCellBlock block;
    counted |= AddAttribute(walk, local, block, attribute, unit, level);
    return block;
  });
  if (!counted) {
    return false;
  }
  sum += local;
  if (shape_.categoryRow.Holds(level)) {
    out.Append(std::move(rows));
  }
  return true;
}

bool CBillQuotaReport::AddAttribute(CSummaryWalk& walk, double& sum, CCellBlock& out,
                                    const CReportAttribute& attribute, const std::wstring& unit,
                                    int level) const {
  double local = 0;
  CCellBlock floors;
  if (!walk.AddFloors(local, floors, SFloorParent(attribute), unit, level)) {
    return false;
  }
  sum += local;
  if (shape_.attributeRow.Holds(level)) {
    out.AddCells(L"@A", attribute.name, attribute.value, unit, local);
  }
  out.Append(std::move(floors));
  return true;
}

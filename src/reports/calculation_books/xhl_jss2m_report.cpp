#include "reports/calculation_books/xhl_jss2m_report.h"

#include <array>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "reports/calculation_books/formula_sum.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/sys_code_walk.h"

namespace {

// The sums of one calculation item by floor text, in text order.
class CFloorSums {
 public:
  void Add(const CReportResultDetail& detail, const CPickedFloor& picked) {
    const std::wstring_view text = picked.TextFor(detail);
    const std::array<double, 4> quantities = ComponentQuantities(detail);
    // Results of one floor follow each other.
    if (last_ == sums_.end() || last_->first.data() != text.data() || last_->first != text) {
      const auto [at, isNew] = sums_.try_emplace(text);
      last_ = at;
      if (isNew) {
        at->second = {quantities, picked.CountFor(detail)};
        return;
      }
    }
    AddQuantities(last_->second.quantities, quantities, 1);
  }

  std::unique_ptr<const SItemFigures> Figures(bool isMain) const {
    if (sums_.empty()) {
      return nullptr;
    }
    auto figures = std::make_unique<SItemFigures>();
    for (const auto& [text, sum] : sums_) {
      if (isMain) {
        AddTerm(figures->formula, sum.quantities[0]);
        if (sum.floorCount != 1) {
          figures->formula += L'*';
          AppendInt(figures->formula, sum.floorCount);
          figures->formula += L"层";
        }
      }
      AddQuantities(figures->sums, sum.quantities, sum.floorCount);
    }
    return figures;
  }

 private:
  struct SSum {
    std::array<double, 4> quantities{};
    int floorCount = 0;
  };
  using Sums = std::map<std::wstring_view, SSum>;

  Sums sums_;
  Sums::iterator last_ = sums_.end();
};

}  // namespace

// Adds up calculation items.
class CXhlJss2MReport::CItemSums {
 public:
  /// Without sections it takes those of every section.
  CItemSums(const Report::SNewCondition& condition, const CSectionChoice* sections)
      : floors_(condition.floors), sections_(sections), sysCodes_(condition.sysCodes) {}

  /// REQUIRES: sections are given.
  bool TakesWhole() const {
    return floors_.empty() && sysCodes_.TakesAll() && sections_->TakesAll();
  }

  std::unique_ptr<const SItemFigures> Figures(const CReportCalItem& item, bool isMain) {
    CFloorSums sums;
    sysCodes_.ForEachChosen(item, [&](const CReportSysCode& sysCode) {
      sysCodes_.ForEachBelow(
          sysCode, [&](const CReportSysCode& holder, const IReportDataNode& child) {
            const auto* floor = NodeAs<CReportFloor>(&child);
            if (floor == nullptr) {
              return true;
            }
            if (floors_.empty()) {
              AddFloor(sums, *floor, CPickedFloor());
              return true;
            }
            // The pairs pick among all floors of the holder at once, so the rest of it is left out.
            ForEachChosenFloor<EPairKey::DrawingFloor>(
                holder.children, floors_,
                [&](const CReportFloor& node, const CPickedFloor& picked, const std::wstring&,
                    const std::wstring&) { AddFloor(sums, node, picked); });
            return false;
          });
    });
    return sums.Figures(isMain);
  }

 private:
  void AddFloor(CFloorSums& sums, const CReportFloor& floor, const CPickedFloor& picked) const {
    ForEachChild<CReportResultDetail>(floor.children, [&](const CReportResultDetail& detail) {
      if ((sections_ == nullptr || sections_->Takes(detail.sgdName)) && picked.Takes(detail)) {
        sums.Add(detail, picked);
      }
    });
  }

  const std::vector<Report::SFloorPair>& floors_;
  const CSectionChoice* sections_;
  CSysCodeWalk sysCodes_;
};

void CXhlJss2MReport::CreatData() {
  FoldDetails([](auto& fold, bool isDivided) {
    fold.Spec();
    if (isDivided) {
      fold.Type();
    }
    fold.Category().Attribute().CalItem().SysCode().Floor();
  });
  const Report::SNewCondition everything;
  CItemSums sums(everything, nullptr);
  KeepFigures([&](const CReportCalItem& item, bool isMain) { return sums.Figures(item, isMain); });
}

void CXhlJss2MReport::GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                                    const Report::SNewCondition& requestCondition,
                                    int sectionMode) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  RunSectionPasses(rows, sectionMode, [&](const CSectionChoice& sections) {
    CItemSums sums(condition, &sections);
    const ETake take = sums.TakesWhole() ? ETake::Whole : ETake::Part;
    CCellBlock lineWork;
    CCellBlock block;
    AddTypes(lineWork, block, *node, [&](const IReportDataNode& parent, bool /*isLineWork*/) {
      return KindBlocks(parent.children, take, [&](const CReportCalItem& item, bool isMain) {
        return sums.Figures(item, isMain);
      });
    });
    // Straight to the rows, ahead of the section's heading.
    lineWork.MoveTo(rows);
    return block;
  });
}

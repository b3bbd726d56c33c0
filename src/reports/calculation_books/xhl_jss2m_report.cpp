#include "reports/calculation_books/xhl_jss2m_report.h"

#include <array>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "reports/calculation_books/book_figures_maker.h"
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

  /// False where nothing was added.
  bool Read(SItemFigures& figures, bool isMain) const {
    figures.formula.clear();
    figures.sums = {};
    for (const auto& [text, sum] : sums_) {
      if (isMain) {
        AddTerm(figures.formula, sum.quantities[0]);
        if (sum.floorCount != 1) {
          figures.formula += L'*';
          AppendInt(figures.formula, sum.floorCount);
          figures.formula += L"层";
        }
      }
      AddQuantities(figures.sums, sum.quantities, sum.floorCount);
    }
    return !sums_.empty();
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

  /// False where nothing counts.
  bool Read(const SFigureRow& row, SItemFigures& figures) {
    CFloorSums sums;
    sysCodes_.ForEachChosen(*row.node, [&](const CReportSysCode& sysCode) {
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
    return sums.Read(figures, row.isMain);
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
  CBookFiguresMaker maker;
  SItemFigures item;
  const auto readItem = [&](SFigureRow& row, SBookFigures& made) {
    const bool counts = sums.Read(row, item);
    if (counts) {
      row.whole = made.Print(item);
    }
    return counts;
  };
  for (const auto& child : root.InOrder()) {
    if (auto* discipline = NodeAs<CReportSpec>(child.get())) {
      auto figures = std::make_shared<SBookFigures>(
          maker.Make(discipline->children, discipline->name, readItem));
      CBookFiguresMaker::PlaceAttributes({figures.get()});
      discipline->figures = std::move(figures);
    }
  }
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
    const SBookFigures& figures = *node->figures;
    SItemFigures item;
    AddItemRow addRow = [&](CCellBlock& out, const SFigureRow& row) {
      if (sums.Read(row, item)) {
        out.AddCells(L"@CI", *row.name, *row.unit, CCellSource::Copied(item.formula), L"",
                     item.sums[0], item.sums[1], item.sums[2], item.sums[3]);
      }
    };
    if (sums.TakesWhole()) {
      addRow = [&](CCellBlock& out, const SFigureRow& row) {
        figures.AddRow(out, row, row.whole, {});
      };
    }
    CCellBlock lineWork;
    CCellBlock block;
    AddTypes(lineWork, block, *node, [&](const IReportDataNode& parent, bool /*isLineWork*/) {
      return KindBlocks(parent.children, figures, addRow);
    });
    // Straight to the rows, ahead of the section's heading.
    lineWork.MoveTo(rows);
    return block;
  });
}

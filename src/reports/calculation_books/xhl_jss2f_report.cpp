#include "reports/calculation_books/xhl_jss2f_report.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "report_model/report_data_method.h"
#include "reports/calculation_books/floor_figures.h"
#include "reports/calculation_books/floor_figures_maker.h"
#include "reports/calculation_books/floor_part_rows.h"
#include "reports/calculation_books/sys_code_order.h"
#include "reports/shared/sys_code_walk.h"
#include "reports/shared/text_places.h"

namespace {

// Feeds a fold's results to the figures as they come. In place of the nodes below a calculation
// item there is one, which holds the results of the system code that the fold has come to.
class CFoldedRuns {
 public:
  explicit CFoldedRuns(std::shared_ptr<const CSysCodeOrder> sysCodes)
      : sysCodes_(std::move(sysCodes)), maker_(sysCodes_) {}

  /// From here on the look-ups make nodes of the tree.
  void Start() { isFolding_ = true; }

  template <class TRecords>
  CReportFloor* Floor(Report::NodeMap& children, const TRecords& of) {
    CReportFloor* floor = CReportDataMethod::GetFloor(children, of.floor);
    if (isFolding_ && floor != floor_) {
      EndFloor();
      if (of.spec.name != spec_) {
        maker_.EndSpec();
        spec_ = of.spec.name;
      }
      floor_ = floor;
    }
    return floor;
  }

  template <class TRecords>
  CReportSysCode* SysCode(const Report::NodeMap& item, const TRecords& of) {
    const std::uint32_t number = sysCodes_->OfRecord(of.row.sysCode);
    run_.name = sysCodes_->Key(number);
    if (!isFolding_) {
      return &run_;
    }
    EndRun();
    isInOrder_ = isInOrder_ && (&item != item_ || number > number_);
    item_ = &item;
    number_ = number;
    maker_.StartRun(item, number);
    return number == CSysCodeOrder::kNone ? nullptr : &run_;
  }

  /// Ends the fold; whether all came in the order of the walk.
  bool End() {
    EndFloor();
    maker_.EndSpec();
    return isInOrder_;
  }

 private:
  void EndRun() {
    ForEachChild<CReportResultDetail>(
        run_.children, [this](const CReportResultDetail& detail) { maker_.AddResult(detail); });
    run_.children.clear();
  }
  void EndFloor() {
    EndRun();
    if (floor_ != nullptr) {
      isInOrder_ = maker_.EndFloor(spec_, *floor_) && isInOrder_;
    }
  }

  std::shared_ptr<const CSysCodeOrder> sysCodes_;
  CFloorFiguresMaker maker_;
  CReportSysCode run_;
  bool isFolding_ = false;
  bool isInOrder_ = true;
  // The places that the fold has come to.
  std::wstring spec_;
  CReportFloor* floor_ = nullptr;
  const Report::NodeMap* item_ = nullptr;
  std::uint32_t number_ = 0;
};

void TakeItem(CFloorFiguresMaker& maker, const CSysCodeOrder& sysCodes, CReportCalItem& item) {
  CSysCodeWalk walk({});
  maker.StartRun(item.children, CSysCodeOrder::kNone);
  walk.ForEachChosen(item, [&](const CReportSysCode& sysCode) {
    const CReportSysCode* last = nullptr;
    walk.ForEachBelow(sysCode, [&](const CReportSysCode& holder, const IReportDataNode& child) {
      if (const auto* detail = NodeAs<CReportResultDetail>(&child)) {
        if (&holder != last) {
          maker.StartRun(item.children, sysCodes.Of(holder.fullName));
          last = &holder;
        }
        maker.AddResult(*detail);
      }
      return true;
    });
  });
  item.ClearChildren();
}

}  // namespace

void CXhlJss2FReport::CreatData() {
  if (!FoldByCode()) {
    Clear();
    FoldByTree();
  }
}

bool CXhlJss2FReport::FoldByCode() {
  using KorDMRec::SKorDMDetailResultData;
  using TRow = decltype(SKorDMDetailResultData::rows)::value_type;
  const auto sysCodes = std::make_shared<const CSysCodeOrder>(
      CTallyDataMng::Instance()->GetXhlDetailData().sysCodes, s_iSysCodeLevel);
  if (sysCodes->GoesOn()) {
    return false;
  }
  CFoldedRuns runs(sysCodes);
  FoldDetails(
      [&](auto& fold, bool isDivided) {
        fold.Spec();
        fold.Level({&TRow::floor}, [&](auto& to, auto& of) { return runs.Floor(to, of); });
        if (isDivided) {
          fold.Type();
        }
        fold.Category().Attribute().CalItem();
        fold.Level({&TRow::sysCode}, [&](auto& to, auto& of) { return runs.SysCode(to, of); });
      },
      [&] { runs.Start(); });
  return runs.End();
}

void CXhlJss2FReport::FoldByTree() {
  FoldDetails([](auto& fold, bool isDivided) {
    fold.Spec().Floor();
    if (isDivided) {
      fold.Type();
    }
    fold.Category().Attribute().CalItem().SysCode();
  });
  const auto sysCodes = std::make_shared<const CSysCodeOrder>(
      CTallyDataMng::Instance()->GetXhlDetailData().sysCodes, s_iSysCodeLevel);
  CFloorFiguresMaker maker(sysCodes);
  for (const auto& discipline : root.InOrder()) {
    const auto* node = NodeAs<CReportSpec>(discipline);
    std::vector<CReportFloor*> floors;
    CollectNodes(discipline->children, floors);
    for (CReportFloor* floor : floors) {
      std::vector<CReportCalItem*> items;
      CollectNodes(floor->children, items);
      for (CReportCalItem* item : items) {
        TakeItem(maker, *sysCodes, *item);
      }
      maker.EndFloor(node->name, *floor);
    }
    maker.EndSpec();
  }
}

void CXhlJss2FReport::GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                                    const Report::SNewCondition& requestCondition,
                                    int sectionMode) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  CFloorPartRows part(condition.sysCodes);
  RunSectionPasses(rows, sectionMode, [&](const CSectionChoice& sections) {
    return FloorBlocks(*node, [&](const CReportFloor& floor, const CPickedFloor& picked) {
      const SFloorFigures& figures = *floor.figures;
      const bool takesWhole = part.TakesAll() && sections.TakesAll() && !picked.IsOther();
      AddItemRow addRow = [&](CCellBlock& out, const SFigureRow& row) { part.AddRow(out, row); };
      if (takesWhole) {
        addRow = [&](CCellBlock& out, const SFigureRow& row) {
          figures.AddRow(out, row, row.whole);
        };
      } else {
        part.Start(figures, sections, picked);
      }
      CCellBlock block;
      CCellBlock others;
      AddTypes(block, others, floor, [&](const IReportDataNode& parent, bool /*isLineWork*/) {
        return KindBlocks(parent.children, figures.items, addRow);
      });
      block.Append(std::move(others));
      return block;
    });
  });
}

#include "reports/calculation_books/floor_figures_maker.h"

#include <utility>

#include "reports/calculation_books/formula_sum.h"

void CFloorFiguresMaker::StartRun(const Report::NodeMap& itemChildren, std::uint32_t sysCode) {
  if (items_.empty() || items_.back().children != &itemChildren) {
    EndItem();
    items_.push_back({&itemChildren, static_cast<std::uint32_t>(runs_.size())});
  }
  if (sysCode != CSysCodeOrder::kNone) {
    runs_.push_back({sysCode, static_cast<std::uint32_t>(results_.size())});
    items_.back().lastRun = static_cast<std::uint32_t>(runs_.size());
  }
}

void CFloorFiguresMaker::AddResult(const CReportResultDetail& detail) {
  components_.insert(components_.end(), detail.components.begin(), detail.components.end());
  // Until the references are written, the number of components.
  results_.push_back({ComponentQuantities(detail), detail.sgdName, detail.floorText,
                      detail.components.size(), detail.floorCount});
  runs_.back().last = static_cast<std::uint32_t>(results_.size());
}

void CFloorFiguresMaker::EndItem() {
  for (const CTextRef& component : components_) {
    Prefetch(component.data());
  }
  auto component = components_.begin();
  for (; written_ < results_.size(); ++written_) {
    SFigureResult& result = results_[written_];
    for (std::size_t i = 0; i < result.lastReference; ++i, ++component) {
      if (!component->empty()) {
        references_ += component->Text();
        references_ += L'$';
      }
    }
    references_ += L'$';
    result.lastReference = references_.size();
  }
  components_.clear();
}

bool CFloorFiguresMaker::EndFloor(const std::wstring& spec, CReportFloor& floor) {
  EndItem();
  if (floor.figures != nullptr) {
    return false;
  }
  // Copies without the room to grow, which stays for the next floor.
  auto figures = std::make_shared<SFloorFigures>();
  figures->runs = runs_;
  figures->results = results_;
  figures->references = references_;
  figures->sysCodes = sysCodes_;
  figures_ = figures.get();
  nextItem_ = 0;
  isInOrder_ = true;
  figures->items = maker_.Make(floor.children, spec, [this](SFigureRow& row, SBookFigures& made) {
    return ReadItem(row, made);
  });
  figures->parts.shrink_to_fit();
  if (!isInOrder_ || nextItem_ != items_.size()) {
    return false;
  }
  floor.figures = figures;
  floors_.push_back(std::move(figures));
  items_.clear();
  runs_.clear();
  results_.clear();
  references_.clear();
  written_ = 0;
  return true;
}

bool CFloorFiguresMaker::ReadItem(SFigureRow& row, SBookFigures& made) {
  if (nextItem_ == items_.size() || items_[nextItem_].children != &row.node->children) {
    isInOrder_ = false;
    return false;
  }
  row.firstRun = nextItem_ == 0 ? 0 : items_[nextItem_ - 1].lastRun;
  row.lastRun = items_[nextItem_].lastRun;
  ++nextItem_;
  if (!Print(row.whole, made, row.isMain, row.firstRun, row.lastRun)) {
    return false;
  }
  row.firstPart = static_cast<std::uint32_t>(figures_->parts.size());
  for (std::uint32_t run = row.firstRun; row.lastRun - row.firstRun > 1 && run < row.lastRun;
       ++run) {
    Print(figures_->parts.emplace_back(), made, row.isMain, run, run + 1);
  }
  return true;
}

bool CFloorFiguresMaker::Print(SFigureText& text, SBookFigures& made, bool isMain,
                               std::uint32_t firstRun, std::uint32_t lastRun) {
  sum_.Clear();
  std::uint32_t result = figures_->FirstResult(firstRun);
  const std::size_t references = figures_->FirstReference(result);
  for (std::uint32_t run = firstRun; run < lastRun; ++run) {
    const std::uint32_t system = sysCodes_->System(runs_[run].sysCode);
    for (; result < runs_[run].last; ++result) {
      sum_.Add(system, results_[result].quantities, results_[result].floorCount);
    }
  }
  if (sum_.Empty()) {
    return false;
  }
  sum_.Read(item_, isMain);
  text = made.Print(item_);
  text.references = references;
  text.referencesSize = figures_->FirstReference(result) - references;
  return true;
}

void CFloorFiguresMaker::EndSpec() {
  std::vector<SBookFigures*> items;
  items.reserve(floors_.size());
  for (const auto& floor : floors_) {
    items.push_back(&floor->items);
  }
  CBookFiguresMaker::PlaceAttributes(items);
  floors_.clear();
}

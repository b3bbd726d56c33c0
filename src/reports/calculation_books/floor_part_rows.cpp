#include "reports/calculation_books/floor_part_rows.h"

#include <algorithm>
#include <string_view>

namespace {

bool Takes(const CPickedFloor& picked, const SFigureResult& result, int& floorCount) {
  SResultIdentity identity;
  identity.floorText = result.floorText;
  identity.floorCount = result.floorCount;
  floorCount = picked.CountFor(identity);
  return picked.Takes(identity);
}

}  // namespace

void CFloorPartRows::Start(const SFloorFigures& figures, const CSectionChoice& sections,
                           const CPickedFloor& picked) {
  figures_ = &figures;
  sections_ = &sections;
  picked_ = &picked;
  takesAllResults_ = sections.TakesAll() && !picked.IsOther();
  if (sysCodes_ != figures.sysCodes.get()) {
    sysCodes_ = figures.sysCodes.get();
    chosen_.clear();
    for (const std::wstring& path : paths_) {
      chosen_.push_back(sysCodes_->Below(path));
    }
  }
}

void CFloorPartRows::AddRow(CCellBlock& out, const SFigureRow& row) {
  ChooseRuns(row);
  if (const SFigureText* text = PrintedText(row)) {
    figures_->AddRow(out, row, *text);
    return;
  }
  sum_.Clear();
  references_.clear();
  for (const TSpan<std::uint32_t>& span : runs_) {
    for (std::uint32_t run = span.first; run < span.last; ++run) {
      AddRun(run);
    }
  }
  if (!sum_.Empty()) {
    sum_.Read(item_, row.isMain);
    out.AddCells(L"@CI", *row.name, *row.unit, CCellSource::Copied(item_.formula), References(),
                 item_.sums[0], item_.sums[1], item_.sums[2], item_.sums[3]);
  }
}

// Runs of the chosen codes in the order of their systems, those of one system in the order of the
// paths.
void CFloorPartRows::ChooseRuns(const SFigureRow& row) {
  runs_.clear();
  if (TakesAll()) {
    runs_.push_back({row.firstRun, row.lastRun});
    return;
  }
  for (const CSysCodeOrder::SRange& codes : chosen_) {
    std::uint32_t first = row.firstRun;
    while (first < row.lastRun && !codes.Holds(figures_->runs[first].sysCode)) {
      ++first;
    }
    std::uint32_t last = first;
    while (last < row.lastRun && codes.Holds(figures_->runs[last].sysCode)) {
      ++last;
    }
    if (first < last) {
      runs_.push_back({first, last});
    }
  }
  if (runs_.size() > 1) {
    const auto systemOf = [this](const TSpan<std::uint32_t>& span) {
      return sysCodes_->System(figures_->runs[span.first].sysCode);
    };
    std::stable_sort(runs_.begin(), runs_.end(),
                     [&](const auto& a, const auto& b) { return systemOf(a) < systemOf(b); });
  }
}

// Null where the row shows neither all of the item nor one run of several.
const SFigureText* CFloorPartRows::PrintedText(const SFigureRow& row) const {
  if (!takesAllResults_ || runs_.size() != 1) {
    return nullptr;
  }
  const TSpan<std::uint32_t>& runs = runs_.front();
  if (runs.first == row.firstRun && runs.last == row.lastRun) {
    return &row.whole;
  }
  return runs.last - runs.first == 1 ? &figures_->parts[row.firstPart + runs.first - row.firstRun]
                                     : nullptr;
}

void CFloorPartRows::AddRun(std::uint32_t run) {
  const std::uint32_t system = sysCodes_->System(figures_->runs[run].sysCode);
  const std::uint32_t first = figures_->FirstResult(run);
  std::size_t reference = figures_->FirstReference(first);
  for (std::uint32_t i = first; i < figures_->runs[run].last; ++i) {
    const SFigureResult& result = figures_->results[i];
    int floorCount = result.floorCount;
    if (takesAllResults_ ||
        (sections_->Takes(result.sgdName) && Takes(*picked_, result, floorCount))) {
      sum_.Add(system, result.quantities, floorCount);
      if (references_.empty() || references_.back().last != reference) {
        references_.push_back({reference, reference});
      }
      references_.back().last = result.lastReference;
    }
    reference = result.lastReference;
  }
}

// A slice of the floor's text where that is all of it.
CCellSource CFloorPartRows::References() {
  const std::wstring_view all = figures_->references;
  const auto textOf = [all](const TSpan<std::size_t>& span) {
    return all.substr(span.first, span.last - span.first);
  };
  if (references_.size() == 1) {
    return textOf(references_.front());
  }
  text_.clear();
  for (const TSpan<std::size_t>& span : references_) {
    text_ += textOf(span);
  }
  return CCellSource::Copied(text_);
}

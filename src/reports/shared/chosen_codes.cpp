#include "reports/shared/chosen_codes.h"

#include <algorithm>
#include <span>
#include <string>

#include "platform/prefetch.h"
#include "platform/text_numbers.h"

namespace {

constexpr std::size_t kRowsAhead = 8;
constexpr std::size_t kTextsAhead = 4;

}  // namespace

CSummaryRows::CChosenCodes::CChosenCodes(const CSummaryRows& kept, const Levels& names,
                                         const SOpen& open, std::wstring_view unit)
    : kept_(kept), open_(open), unit_(unit) {
  std::vector<SPlacedCode> several;
  std::span<const SPlacedCode> codes;
  if (names.front().size() == 1) {
    codes = kept.Named(*names.front().begin());
  } else {
    kept.Choose(several, names.front());
    std::sort(several.begin(), several.end(),
              [](const SPlacedCode& a, const SPlacedCode& b) { return a.row < b.row; });
    codes = several;
  }
  if (codes.empty()) {
    return;
  }
  FindNames(names);
  // Most often each floor has one code with one chosen below it.
  steps_.reserve(codes.size() * (names.size() + 1));
  pieces_.reserve(codes.size());
  floors_.reserve(codes.size());
  for (std::size_t first = 0, last = 0; first < codes.size(); first = last) {
    const std::size_t floor = steps_.size();
    steps_.push_back({{codes[first].floorRow, 0}, true, {}});
    for (; last < codes.size() && codes[last].floorRow == codes[first].floorRow; ++last) {
      if (last + kRowsAhead < codes.size()) {
        Prefetch(&kept.rows_[codes[last + kRowsAhead].row]);
      }
      AddCode(codes[last].row);
    }
    if (addends_.empty()) {
      steps_.resize(floor);
      continue;
    }
    steps_[floor].values = SumOf(0);
    addends_.clear();
    floors_.push_back({codes[first].floor, steps_[floor].values.quantity});
  }
  for (const SStep& step : steps_) {
    if (!step.isChanged) {
      cells_ += kept.CountCells(step.rows, open);
    } else if (Shows(kept.rows_[step.rows.first], open)) {
      cells_ += kCells;
    }
  }
}

SWholeSum CSummaryRows::CChosenCodes::Sum() {
  std::sort(floors_.begin(), floors_.end(),
            [](const SFloorSum& a, const SFloorSum& b) { return a.floor < b.floor; });
  SWholeSum sum;
  for (const SFloorSum& floor : floors_) {
    sum.Add({floor.quantity, true});
  }
  return sum;
}

// Both the filter's names and the kept ones are in order.
void CSummaryRows::CChosenCodes::FindNames(const Levels& names) {
  levelCount_ = names.size();
  for (std::size_t level = 1; level < levelCount_; ++level) {
    chosen_[level].first = chosenNames_.size();
    for (const std::wstring& name : names[level]) {
      const auto at = std::lower_bound(kept_.names_.begin(), kept_.names_.end(), name);
      if (at != kept_.names_.end() && *at == name) {
        chosenNames_.push_back(static_cast<std::uint32_t>(at - kept_.names_.begin()));
      }
    }
    chosen_[level].last = chosenNames_.size();
  }
}

bool CSummaryRows::CChosenCodes::IsChosen(const SRow& sysCode) const {
  const SPart& part = chosen_[sysCode.depth];
  const auto names = std::span(chosenNames_).subspan(part.first, part.last - part.first);
  return std::binary_search(names.begin(), names.end(), sysCode.detail);
}

// Adds what is chosen of a code to `addends_`, unless it is nothing. Goes as deep as codes have
// rows.
void CSummaryRows::CChosenCodes::AddCode(std::size_t at) {
  const SRow& row = kept_.rows_[at];
  if (row.depth + std::size_t{1} >= levelCount_) {
    steps_.push_back({{at, row.next}, false, {}});
    Add(row);
    return;
  }
  const std::size_t step = steps_.size();
  const std::size_t firstAddend = addends_.size();
  steps_.push_back({{at, 0}, true, {}});
  std::size_t child = at + 1;
  for (; child < row.next && kept_.rows_[child].kind == EKind::SysCode;
       child = kept_.rows_[child].next) {
    if (IsChosen(kept_.rows_[child])) {
      AddCode(child);
    }
  }
  // The lines.
  if (child < row.next) {
    steps_.push_back({{child, row.next}, false, {}});
  }
  for (; child < row.next; ++child) {
    Add(kept_.rows_[child]);
  }
  if (addends_.size() == firstAddend) {
    steps_.resize(step);
    return;
  }
  // Sums and references go by the order of the tree.
  std::sort(addends_.begin() + static_cast<std::ptrdiff_t>(firstAddend), addends_.end(),
            [](const SAddend& a, const SAddend& b) { return a.place < b.place; });
  steps_[step].values = SumOf(firstAddend);
  addends_.resize(firstAddend);
  addends_.push_back({row.references, steps_[step].values});
}

void CSummaryRows::CChosenCodes::Add(const SRow& row) {
  addends_.push_back({row.references, {row.quantity, &row, {pieces_.size(), pieces_.size() + 1}}});
  pieces_.push_back(kept_.References(row));
}

// REQUIRES: there is an addend.
CSummaryRows::CChosenCodes::SValues CSummaryRows::CChosenCodes::SumOf(std::size_t firstAddend) {
  const auto addends = std::span(addends_).subspan(firstAddend);
  if (addends.size() == 1) {
    SValues values = addends.front().values;
    // A sum begins with a zero, which takes the sign from another one.
    values.quantity += 0.0;
    values.source = values.quantity != 0 ? values.source : nullptr;
    return values;
  }
  SValues values;
  values.references.first = pieces_.size();
  for (const SAddend& addend : addends) {
    values.quantity += addend.values.quantity;
    for (std::size_t i = addend.values.references.first; i < addend.values.references.last; ++i) {
      const std::wstring_view piece = pieces_[i];
      pieces_.push_back(piece);
    }
  }
  values.references.last = pieces_.size();
  return values;
}

void CSummaryRows::CChosenCodes::PrefetchStep(std::size_t step) const {
  if (step < steps_.size()) {
    const SRow& row = kept_.rows_[steps_[step].rows.first];
    Prefetch(kept_.text_.data() + row.quantityText);
    Prefetch(kept_.references_.data() + row.references);
  }
}

void CSummaryRows::CChosenCodes::Write(Report::CellArray& out) const {
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    PrefetchStep(i + kTextsAhead);
    const SStep& step = steps_[i];
    const SRow& row = kept_.rows_[step.rows.first];
    if (!step.isChanged) {
      kept_.Write(out, step.rows, open_, unit_);
    } else if (Shows(row, open_)) {
      const SValues& values = step.values;
      const bool isOnePiece = values.references.last - values.references.first == 1;
      const std::wstring joined = isOnePiece ? std::wstring() : Joined(values.references);
      const std::wstring sum =
          values.source != nullptr ? std::wstring() : NumberText(values.quantity);
      kept_.WriteRow(out, row, unit_,
                     values.source != nullptr ? kept_.Quantity(*values.source) : sum,
                     isOnePiece ? pieces_[values.references.first] : joined);
    }
  }
}

std::wstring CSummaryRows::CChosenCodes::Joined(const SPart& references) const {
  const auto pieces =
      std::span(pieces_).subspan(references.first, references.last - references.first);
  std::size_t size = 0;
  for (const std::wstring_view piece : pieces) {
    size += piece.size();
  }
  std::wstring text;
  text.reserve(size);
  for (const std::wstring_view piece : pieces) {
    text += piece;
  }
  return text;
}

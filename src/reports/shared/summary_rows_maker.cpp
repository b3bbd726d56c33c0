#include "reports/shared/summary_rows_maker.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string_view>

#include "report_model/floor_grade.h"

void CSummaryRows::CMaker::Make(const Report::NodeMap& nodes) {
  std::vector<SFloor> floors;
  std::uint32_t place = 0;
  for (const auto& child : nodes.InOrder()) {
    auto* floor = NodeAs<CReportFloor>(child.get());
    if (floor != nullptr && floor->whole.counted) {
      floors.push_back({floor, place});
    }
    ++place;
  }
  std::stable_sort(floors.begin(), floors.end(),
                   [](const SFloor& a, const SFloor& b) { return a.node->grade < b.node->grade; });
  std::vector<SFloor> dropped;
  const SFloorGrade* last = nullptr;
  for (const SFloor& floor : floors) {
    if (last != nullptr && *last == floor.node->grade) {
      dropped.push_back(floor);
    } else {
      AddFloor(floor);
      last = &floor.node->grade;
    }
  }
  to_.wholeEnd_ = to_.rows_.size();
  // A filter may still choose them.
  for (const SFloor& floor : dropped) {
    AddFloor(floor);
    to_.holdsAll_ = false;
  }
  to_.references_.reserve(size_);
  AppendReferences(to_.references_, results_, mark_);
  to_.rows_.shrink_to_fit();
  to_.text_.shrink_to_fit();
  RankNames();
  FileCodes();
}

// More takes more memory than there is.
std::uint32_t CSummaryRows::CMaker::Narrow(std::size_t size) {
  if (size > std::numeric_limits<std::uint32_t>::max()) {
    throw std::bad_alloc();
  }
  return static_cast<std::uint32_t>(size);
}

template <class TAppend>
CSummaryRows::CMaker::STextPart CSummaryRows::CMaker::Append(TAppend&& append) {
  const std::size_t begin = to_.text_.size();
  append(to_.text_);
  return {Narrow(begin), Narrow(to_.text_.size() - begin)};
}

CSummaryRows::CMaker::STextPart CSummaryRows::CMaker::TitleOf(const CReportSysCode& node) {
  const auto [at, isNew] = titles_.try_emplace({&node.name.Text(), &node.remark.Text()});
  if (isNew) {
    at->second = Append([&node](std::wstring& text) { AppendTitle(text, node); });
  }
  return at->second;
}

CSummaryRows::SRow& CSummaryRows::CMaker::AddRow(EKind kind, double quantity, const SPart& part,
                                                 const STextPart& title) {
  const STextPart number = Append([quantity](std::wstring& text) { AppendNumber(text, quantity); });
  to_.rows_.push_back({.quantity = quantity,
                       .next = 0,
                       .title = title.begin,
                       .titleSize = title.size,
                       .quantityText = number.begin,
                       .references = Narrow(part.begin),
                       .referencesSize = Narrow(part.size),
                       .detail = 0,
                       .quantitySize = static_cast<std::uint8_t>(number.size),
                       .kind = kind,
                       .depth = 0});
  return to_.rows_.back();
}

void CSummaryRows::CMaker::AddFloor(const SFloor& place) {
  CReportFloor& floor = *place.node;
  const std::size_t row = to_.rows_.size();
  const STextPart name = Append([&floor](std::wstring& text) { text += floor.name; });
  AddRow(EKind::Floor, floor.whole.quantity, {}, name).next = Narrow(row + 1);
  for (CReportSysCode* sysCode : FirstSysCodesOf(floor, firstSysCodes_)) {
    if (sysCode->whole.counted) {
      to_.placed_.push_back({sysCode, place.place, Narrow(row), Narrow(to_.rows_.size())});
      parts_.clear();
      LayOut(*sysCode);
      AddSysCode(0, 0);
    }
  }
  floor.items = {row, to_.rows_.size()};
}

// Keeps its own stack: a code may have any number of levels.
void CSummaryRows::CMaker::LayOut(const CReportSysCode& first) {
  Enter(first);
  while (!levels_.empty()) {
    SLevel& level = levels_.back();
    if (level.next == level.node->children.InOrder().end()) {
      SPart& part = parts_[level.place];
      part.size = size_ - part.begin;
      part.next = parts_.size();
      levels_.pop_back();
      continue;
    }
    const IReportDataNode* child = level.next->get();
    ++level.next;
    if (const auto* sysCode = NodeAs<CReportSysCode>(child)) {
      Enter(*sysCode);
    } else if (const auto* result = NodeAs<CReportResult>(child)) {
      const std::size_t size = result->ComponentTextSize() + 1;
      parts_.push_back({result, size_, size, parts_.size() + 1});
      results_.push_back(result);
      size_ += size;
    }
  }
}

void CSummaryRows::CMaker::Enter(const CReportSysCode& node) {
  levels_.push_back({&node, node.children.InOrder().begin(), parts_.size()});
  parts_.push_back({&node, size_, 0, 0});
}

// Goes as deep as system codes have rows. REQUIRES: the code counts.
void CSummaryRows::CMaker::AddSysCode(std::size_t place, std::size_t depth) {
  const SPart& part = parts_[place];
  const auto& node = static_cast<const CReportSysCode&>(*part.node);
  const std::size_t first = to_.rows_.size();
  SRow& row = AddRow(EKind::SysCode, node.whole.quantity, part, TitleOf(node));
  row.depth = static_cast<std::uint8_t>(depth);
  row.detail = NumberOf(node.name);
  const bool isLast = depth + 1 == SYSCODE_LEVEL_COUNT;
  if (!isLast) {
    for (const std::size_t child : SysCodesBelow(place)) {
      AddSysCode(child, depth + 1);
    }
  }
  const std::size_t firstLine = to_.rows_.size();
  // Where a filter leaves some codes out, the lines beside these count.
  if (!isLast || lines_ == ELines::Shown) {
    AddLines(place);
  }
  const std::uint32_t next = Narrow(to_.rows_.size());
  to_.rows_[first].next = next;
  for (std::size_t line = firstLine; line < next; ++line) {
    to_.rows_[line].next = next;
  }
}

void CSummaryRows::CMaker::AddLines(std::size_t place) {
  std::uint32_t number = 1;
  for (std::size_t child = place + 1; child < parts_[place].next; child = parts_[child].next) {
    if (const auto* result = NodeAs<CReportResult>(parts_[child].node)) {
      const int floors = result->floorCount;
      const STextPart formula =
          Append([&](std::wstring& text) { AppendFormula(text, *result, floors); });
      AddRow(EKind::Line, result->Quantity(floors), parts_[child], formula).detail = number;
      ++number;
    }
  }
}

// The places of the codes directly below that count, by sort number; of equal numbers the first
// alone.
std::vector<std::size_t> CSummaryRows::CMaker::SysCodesBelow(std::size_t place) {
  std::vector<std::size_t> below;
  for (std::size_t child = place + 1; child < parts_[place].next; child = parts_[child].next) {
    const auto* sysCode = NodeAs<CReportSysCode>(parts_[child].node);
    if (sysCode != nullptr && sysCode->whole.counted) {
      below.push_back(child);
    }
  }
  const auto number = [this](std::size_t at) {
    return static_cast<const CReportSysCode*>(parts_[at].node)->sortId;
  };
  std::stable_sort(below.begin(), below.end(),
                   [&](std::size_t a, std::size_t b) { return number(a) < number(b); });
  const auto last = std::unique(below.begin(), below.end(), [&](std::size_t a, std::size_t b) {
    return number(a) == number(b);
  });
  if (last != below.end()) {
    below.erase(last, below.end());
    to_.holdsAll_ = false;
  }
  return below;
}

std::uint32_t CSummaryRows::CMaker::NumberOf(std::wstring_view name) {
  return numbers_.try_emplace(name, Narrow(numbers_.size())).first->second;
}

void CSummaryRows::CMaker::RankNames() {
  for (const auto& [name, number] : numbers_) {
    to_.names_.push_back(name);
  }
  std::sort(to_.names_.begin(), to_.names_.end());
  std::vector<std::uint32_t> ranks(to_.names_.size());
  for (std::size_t i = 0; i < ranks.size(); ++i) {
    ranks[numbers_.at(to_.names_[i])] = Narrow(i);
  }
  for (SRow& row : to_.rows_) {
    if (row.kind == EKind::SysCode) {
      row.detail = ranks[row.detail];
    }
  }
}

void CSummaryRows::CMaker::FileCodes() {
  std::vector<SPlacedCode>& placed = to_.placed_;
  placed.shrink_to_fit();
  std::sort(placed.begin(), placed.end(), [](const SPlacedCode& a, const SPlacedCode& b) {
    return a.node->name != b.node->name ? a.node->name < b.node->name : a.row < b.row;
  });
  for (std::size_t first = 0, last = 0; first < placed.size(); first = last) {
    const std::wstring_view name = placed[first].node->name;
    while (last < placed.size() && placed[last].node->name == name) {
      ++last;
    }
    to_.codes_.push_back({name, first, last});
  }
  to_.codes_.shrink_to_fit();
}

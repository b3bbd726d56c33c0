#include "reports/shared/summary_walk.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/text_numbers.h"
#include "report_model/formula_text.h"
#include "report_model/report_data_method.h"
#include "reports/shared/node_choice.h"

namespace {

constexpr std::array kSysCodeMarkers{L"@S1", L"@S2", L"@S3"};
static_assert(kSysCodeMarkers.size() == SYSCODE_LEVEL_COUNT);

// Sorts by sort number, equal ones as they stand, unless that is their order already.
template <class TNode>
void SortByNumber(std::vector<TNode*>& sysCodes) {
  const auto isLess = [](const TNode* a, const TNode* b) { return a->sortId < b->sortId; };
  if (!std::is_sorted(sysCodes.begin(), sysCodes.end(), isLess)) {
    std::stable_sort(sysCodes.begin(), sysCodes.end(), isLess);
  }
}

bool HaveOneNumber(const CReportSysCode* a, const CReportSysCode* b) {
  return a->sortId == b->sortId;
}

}  // namespace

std::vector<CReportSysCode*> FirstSysCodesOf(const CReportFloor& node, EFirstSysCodes choice) {
  std::vector<CReportSysCode*> sysCodes;
  sysCodes.reserve(node.children.size());
  for (const auto& child : node.children.InOrder()) {
    if (auto* sysCode = NodeAs<CReportSysCode>(child.get())) {
      sysCodes.push_back(sysCode);
    }
  }
  if (choice == EFirstSysCodes::BySortNumber) {
    SortByNumber(sysCodes);
    // Of each run of equal numbers the last one, the greatest name, stays.
    const auto first = std::unique(sysCodes.rbegin(), sysCodes.rend(), HaveOneNumber);
    sysCodes.erase(sysCodes.begin(), first.base());
  }
  return sysCodes;
}

bool CSummaryWalk::AddFloors(double& sum, CCellBlock& out, const SFloorParent& parent,
                             std::wstring_view unit, int level) {
  unit_ = unit;
  SetLevel(level);
  const std::vector<Report::SFloorPair>& floors = request_.condition.floors;
  if (takesWholeFloors_ && floors.empty() && !shape_.floorRow.Holds(level_)) {
    sum += parent.whole.quantity;
    return parent.whole.counted;
  }
  bool counted = false;
  if (floors.empty() && !request_.sysCodes.empty()) {
    counted = AddFloorsByCode(sum, parent);
  } else {
    ForEachChosenFloor<EPairKey::DrawingFloor>(
        parent.children, floors,
        [&](const CReportFloor& node, const CPickedFloor& picked, const std::wstring& drawingFloor,
            const std::wstring& floor) {
          const bool needsCodes = !takesWholeFloors_ || picked.IsOther();
          counted |=
              AddFloor(sum, {node, picked, drawingFloor, floor,
                             needsCodes ? ChosenSysCodes(node) : std::vector<CReportSysCode*>()});
        });
  }
  floorBlocks_.MoveTo(out);
  return counted;
}

// The floors that have first system codes which the filter takes. These are looked up, so that the
// others cost nothing.
bool CSummaryWalk::AddFloorsByCode(double& sum, const SFloorParent& parent) {
  struct SByName {
    bool operator()(const SFirstCode& a, const std::wstring& b) const { return a.name < b; }
    bool operator()(const std::wstring& a, const SFirstCode& b) const { return a < b.name; }
  };
  chosenCodes_.clear();
  for (const std::wstring& name : request_.sysCodes.front()) {
    const auto [first, last] =
        std::equal_range(parent.firstCodes.begin(), parent.firstCodes.end(), name, SByName());
    for (auto at = first; at != last; ++at) {
      chosenCodes_.push_back(&*at);
    }
  }
  // Those of one name stand by floor already.
  if (request_.sysCodes.front().size() > 1) {
    const bool byNumber = shape_.firstSysCodes == EFirstSysCodes::BySortNumber;
    std::stable_sort(chosenCodes_.begin(), chosenCodes_.end(),
                     [byNumber](const SFirstCode* a, const SFirstCode* b) {
                       return a->floor != b->floor ? a->floor < b->floor
                                                   : byNumber && a->node->sortId < b->node->sortId;
                     });
  }
  bool counted = false;
  std::vector<CReportSysCode*>& sysCodes = sysCodesOfFloor_;
  for (std::size_t i = 0; i < chosenCodes_.size();) {
    const std::size_t place = chosenCodes_[i]->floor;
    for (sysCodes.clear(); i < chosenCodes_.size() && chosenCodes_[i]->floor == place; ++i) {
      sysCodes.push_back(chosenCodes_[i]->node);
    }
    if (const auto* node = NodeAs<CReportFloor>(parent.children.InOrder()[place])) {
      counted |= AddFloor(sum, {*node, CPickedFloor(), node->name, node->name, sysCodes});
    }
  }
  return counted;
}

void CSummaryWalk::SetLevel(int level) {
  level_ = level;
  const bool takesAll = sections_.TakesAll();
  takesWholeFloors_ = takesAll && request_.sysCodes.empty() && level < shape_.firstSysCodeLevel;
  takesWholeCodes_ = takesAll && request_.sysCodes.size() <= 1;
}

// Whether system codes at `depth` show rows.
bool CSummaryWalk::Opens(std::size_t depth) const {
  return depth < kSysCodeMarkers.size() &&
         static_cast<long long>(depth) + shape_.firstSysCodeLevel <= static_cast<long long>(level_);
}

namespace {

// Lines show expressions, which lie in the result set far apart.
void PrefetchExpressions(const std::vector<CReportSysCode*>& sysCodes) {
  CSysCodeWalk walk({});
  for (const CReportSysCode* sysCode : sysCodes) {
    walk.ForEachBelow(*sysCode, [](const CReportSysCode&, const IReportDataNode& child) {
      if (const auto* result = NodeAs<CReportResult>(&child)) {
        Prefetch(result->expression.data());
      }
      return true;
    });
  }
}

}  // namespace

// Puts the floor's block, if it has rows.
bool CSummaryWalk::AddFloor(double& sum, const SFloorStep& step) {
  const CReportFloor& node = step.node;
  const bool isWhole = takesWholeCodes_ && !step.picked.IsOther();
  SWholeSum local;
  CCellBlock partRows;
  if (isWhole && takesWholeFloors_) {
    local = node.whole;
  } else if (isWhole) {
    for (const CReportSysCode* sysCode : step.sysCodes) {
      local.Add(sysCode->whole);
    }
  } else {
    local = AddParts(partRows, step.sysCodes, step.picked);
  }
  if (!local.counted) {
    return false;
  }
  sum += local.quantity;
  CCellBlock block;
  if (shape_.floorRow.Holds(level_)) {
    const bool showsDrawing = shape_.floorCell == EFloorCell::DrawingFloor;
    block.AddCells(L"@F", node.name, showsDrawing ? step.drawingFloor : step.floor, unit_,
                   local.quantity);
  }
  if (isWhole && Opens(0)) {
    for (CReportSysCode* sysCode : step.sysCodes) {
      KeepReferences(*sysCode, shape_.chainMark);
      AddWholeRows(block, *sysCode, 0);
    }
  }
  block.Append(std::move(partRows));
  if (!block.Empty()) {
    floorBlocks_.Put(node, step.floor, std::move(block));
  }
  return true;
}

bool CSummaryWalk::MayEnter(const CReportSysCode& node, std::size_t depth) const {
  return depth >= request_.sysCodes.size() || request_.sysCodes[depth].contains(node.name);
}

// The first system codes that the filter takes. It chooses among those that sort numbers have left.
std::vector<CReportSysCode*> CSummaryWalk::ChosenSysCodes(const CReportFloor& node) const {
  std::vector<CReportSysCode*> sysCodes = FirstSysCodesOf(node, shape_.firstSysCodes);
  std::erase_if(sysCodes, [this](const CReportSysCode* each) { return !MayEnter(*each, 0); });
  return sysCodes;
}

// Where nothing below a first system code is left out, the fold knows its sums, and its rows can be
// written in their order.
void CSummaryWalk::AddWholeRows(CCellBlock& out, const CReportSysCode& node, std::size_t depth) {
  if (!node.whole.counted) {
    return;
  }
  AddSysCodeRow(out, node, depth, node.whole.quantity, node.references);
  if (node.hasSysCodes && Opens(depth + 1)) {
    std::vector<const CReportSysCode*>& below = below_[depth];
    below.clear();
    ForEachChild<CReportSysCode>(node.children, [&below](const CReportSysCode& child) {
      if (child.whole.counted) {
        below.push_back(&child);
      }
    });
    SortByNumber(below);
    below.erase(std::unique(below.begin(), below.end(), HaveOneNumber), below.end());
    for (const CReportSysCode* child : below) {
      AddWholeRows(out, *child, depth + 1);
    }
  }
  if (level_ == shape_.lineLevel) {
    AddWholeLines(out, node);
  }
}

void CSummaryWalk::AddWholeLines(CCellBlock& out, const CReportSysCode& node) {
  constexpr std::size_t kAhead = 4;
  const auto& children = node.children.InOrder();
  std::size_t begin = 0;
  int number = 1;
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (const auto* ahead =
            i + kAhead < children.size() ? NodeAs<CReportResult>(children[i + kAhead]) : nullptr) {
      Prefetch(ahead->expression.data());
    }
    if (const auto* result = NodeAs<CReportResult>(children[i])) {
      AddLine(out, number, *result, result->Quantity(result->floorCount), result->floorCount,
              node.references.substr(begin, result->referencesSize));
      begin += result->referencesSize;
      ++number;
    } else if (const auto* sysCode = NodeAs<CReportSysCode>(children[i])) {
      begin += sysCode->references.size();
    }
  }
}

// The rows of what a filter leaves of the system codes.
SWholeSum CSummaryWalk::AddParts(CCellBlock& out, const std::vector<CReportSysCode*>& sysCodes,
                                 const CPickedFloor& picked) {
  if (Opens(0)) {
    chain_ = std::make_unique<SKeptText>();
  }
  if (level_ == shape_.lineLevel) {
    PrefetchExpressions(sysCodes);
  }
  SWholeSum sum;
  for (const CReportSysCode* sysCode : sysCodes) {
    sum.counted |= AddSysCode(sum.quantity, out, *sysCode, picked);
  }
  FinishChain(out);
  return sum;
}

// REQUIRES: MayEnter.
void CSummaryWalk::Enter(const CReportSysCode& node, bool isOther) {
  const std::size_t depth = frames_.size();
  SFrame& frame = frames_.emplace_back(node, chainSize_);
  const bool filtersBelow = depth + 1 < request_.sysCodes.size();
  if (!Opens(0) && sections_.TakesAll() && !isOther && !filtersBelow && node.HasWhole()) {
    frame.sum = node.whole.quantity;
    frame.counted = node.whole.counted;
    frame.next = node.children.InOrder().end();
  }
}

// REQUIRES: MayEnter. Keeps its own stack: a code may have any number of levels.
bool CSummaryWalk::AddSysCode(double& sum, CCellBlock& out, const CReportSysCode& first,
                              const CPickedFloor& picked) {
  Enter(first, picked.IsOther());
  while (true) {
    SFrame& frame = frames_.back();
    if (frame.next != frame.node.children.InOrder().end()) {
      const IReportDataNode& child = **frame.next++;
      if (const auto* sysCode = NodeAs<CReportSysCode>(&child)) {
        if (MayEnter(*sysCode, frames_.size())) {
          Enter(*sysCode, picked.IsOther());
        }
      } else if (const auto* result = NodeAs<CReportResult>(&child)) {
        frame.counted |= AddResult(frame, *result, picked);
      }
      continue;
    }
    SFrame done = std::move(frame);
    frames_.pop_back();
    CCellBlock rows = done.counted ? SysCodeRows(done, frames_.size()) : CCellBlock();
    if (frames_.empty()) {
      if (done.counted) {
        sum += done.sum;
        out.Append(std::move(rows));
      }
      return done.counted;
    }
    if (done.counted) {
      SFrame& parent = frames_.back();
      parent.counted = true;
      parent.sum += done.sum;
      if (!rows.Empty()) {
        PutBlock(parent.blocks, CSysResultData(done.node.sortId, done.node.name, std::move(rows)));
      }
    }
  }
}

CCellBlock CSummaryWalk::SysCodeRows(SFrame& frame, std::size_t depth) {
  CCellBlock rows;
  if (Opens(depth)) {
    AddSysCodeRow(rows, frame.node, depth, frame.sum, ChainFrom(frame.chainBegin));
    CReportDataMethod::ChangeSysResult(rows, std::move(frame.blocks));
    rows.Append(std::move(frame.lines));
  }
  return rows;
}

// REQUIRES: Opens.
void CSummaryWalk::AddSysCodeRow(CCellBlock& out, const CReportSysCode& node, std::size_t depth,
                                 double sum, CCellSource references) {
  CCellSource title = node.name;
  if (!node.remark.empty()) {
    title_ = node.name;
    title_ += L'(';
    title_ += node.remark;
    title_ += L')';
    title = CCellSource::Copied(title_);
  }
  out.AddCells(kSysCodeMarkers[depth], title, unit_, sum, references);
}

bool CSummaryWalk::AddResult(SFrame& frame, const CReportResult& result,
                             const CPickedFloor& picked) {
  if (!sections_.Takes(result.sgdName) || !picked.Takes(result)) {
    return false;
  }
  const int floorCount = picked.CountFor(result);
  const double quantity = result.Quantity(floorCount);
  frame.sum += quantity;
  if (chain_ != nullptr) {
    const std::size_t chainBegin = chainSize_;
    references_.push_back(&result);
    chainSize_ += result.ComponentTextSize() + 1;
    if (level_ == shape_.lineLevel) {
      AddLine(frame.lines, frame.lineNumber, result, quantity, floorCount, ChainFrom(chainBegin));
      ++frame.lineNumber;
    }
  }
  return true;
}

void CSummaryWalk::AddLine(CCellBlock& out, int number, const CReportResult& result,
                           double quantity, int floorCount, CCellSource references) {
  CCellSource formula = result.expression;
  if (floorCount > 1 || result.components.size() > 1) {
    formula_.clear();
    AppendRepeated(formula_, result.expression, static_cast<int>(result.components.size()),
                   floorCount);
    formula = CCellSource::Copied(formula_);
  }
  circuit_ = L"回路";
  AppendInt(circuit_, number);
  out.AddCells(L"@L", CCellSource::Copied(circuit_), formula, unit_, quantity, references);
}

CCellSource CSummaryWalk::ChainFrom(std::size_t begin) const {
  return CCellSource::Slice(*chain_, begin, chainSize_ - begin);
}

void CSummaryWalk::FinishChain(CCellBlock& rows) {
  if (!rows.Empty() && chain_ != nullptr) {
    chain_->text.reserve(chainSize_);
    AppendReferences(chain_->text, references_, shape_.chainMark);
    rows.Keep(std::move(chain_));
  }
  chain_.reset();
  references_.clear();
  chainSize_ = 0;
}

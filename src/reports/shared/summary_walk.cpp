#include "reports/shared/summary_walk.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "report_model/report_data_method.h"
#include "reports/shared/node_choice.h"

namespace {

auto AddingTo(CCellBlock& block) {
  return [&block](auto&&... cells) { block.AddCells(std::forward<decltype(cells)>(cells)...); };
}

}  // namespace

bool CSummaryWalk::AddFloors(double& sum, CCellBlock& out, const SFloorParent& parent,
                             std::wstring_view unit, int level) {
  unit_ = unit;
  SetLevel(level);
  const std::vector<Report::SFloorPair>& floors = request_.condition.floors;
  if (takesWholeFloors_ && floors.empty() && (Opens(0) || !ShowsFloors())) {
    if (Opens(0) && parent.whole.counted) {
      const CSummaryRows& rows = WholeRows(parent);
      rows.AddTo(out, rows.Whole(), Open(), unit_);
    }
    sum += parent.whole.quantity;
    return parent.whole.counted;
  }
  bool counted = false;
  if (floors.empty() && !request_.sysCodes.empty()) {
    const CSummaryRows& rows = WholeRows(parent);
    if (sections_.TakesAll() && rows.HoldsAll()) {
      return rows.AddChosenTo(out, sum, request_.sysCodes, Open(), unit_);
    }
    counted = AddFloorsByCode(sum, parent);
  } else {
    ForEachChosenFloor<EPairKey::DrawingFloor>(
        parent.children, floors,
        [&](const CReportFloor& node, const CPickedFloor& picked, const std::wstring& drawingFloor,
            const std::wstring& floor) {
          const bool needsCodes = !takesWholeFloors_ || picked.IsOther();
          counted |= AddFloor(sum, {parent, node, picked, drawingFloor, floor,
                                    needsCodes ? ChosenSysCodes(node) : SysCodes()});
        });
  }
  floorBlocks_.MoveTo(out);
  return counted;
}

// The floors that have first system codes which the filter takes. These are looked up, so that the
// others cost nothing.
bool CSummaryWalk::AddFloorsByCode(double& sum, const SFloorParent& parent) {
  chosenCodes_.clear();
  WholeRows(parent).Choose(chosenCodes_, request_.sysCodes.front());
  bool counted = false;
  SysCodes sysCodes;
  for (std::size_t i = 0; i < chosenCodes_.size();) {
    const std::size_t place = chosenCodes_[i].floor;
    for (sysCodes.clear(); i < chosenCodes_.size() && chosenCodes_[i].floor == place; ++i) {
      sysCodes.push_back(chosenCodes_[i].node);
    }
    if (const auto* node = NodeAs<CReportFloor>(parent.children.InOrder()[place])) {
      counted |= AddFloor(sum, {parent, *node, CPickedFloor(), node->name, node->name, sysCodes});
    }
  }
  return counted;
}

void CSummaryWalk::SetLevel(int level) {
  level_ = level;
  takesWholeFloors_ = sections_.TakesAll() && request_.sysCodes.empty();
}

// Whether system codes at `depth` show rows.
bool CSummaryWalk::Opens(std::size_t depth) const {
  return depth < SYSCODE_LEVEL_COUNT &&
         static_cast<long long>(depth) + shape_.firstSysCodeLevel <= static_cast<long long>(level_);
}

namespace {

// Lines show expressions, which lie in the result set far apart.
void PrefetchExpressions(const std::vector<const CReportSysCode*>& sysCodes) {
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
  const bool isWhole = takesWholeFloors_ && !step.picked.IsOther();
  CCellBlock partRows;
  const SWholeSum local = isWhole ? node.whole : AddParts(partRows, step.sysCodes, step.picked);
  if (!local.counted) {
    return false;
  }
  sum += local.quantity;
  CCellBlock block;
  if (ShowsFloors()) {
    const bool showsDrawing = shape_.floorCell == EFloorCell::DrawingFloor;
    FloorCells(AddingTo(block), node.name.Text(), showsDrawing ? step.drawingFloor : step.floor,
               unit_, local.quantity);
  }
  if (isWhole && Opens(0)) {
    CSummaryRows::SOpen open = Open();
    open.floors = false;
    WholeRows(step.parent).AddTo(block, node.items, open, unit_);
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
CSummaryWalk::SysCodes CSummaryWalk::ChosenSysCodes(const CReportFloor& node) const {
  SysCodes chosen;
  for (const CReportSysCode* each : FirstSysCodesOf(node, shape_.firstSysCodes)) {
    if (MayEnter(*each, 0)) {
      chosen.push_back(each);
    }
  }
  return chosen;
}

const CSummaryRows& CSummaryWalk::WholeRows(const SFloorParent& parent) const {
  if (parent.rows == nullptr) {
    parent.rows = std::make_shared<const CSummaryRows>(
        parent.children, shape_.firstSysCodes, shape_.chainMark,
        shape_.lineLevel == SSummaryShape::kNoLines ? CSummaryRows::ELines::Hidden
                                                    : CSummaryRows::ELines::Shown);
  }
  return *parent.rows;
}

CSummaryRows::SOpen CSummaryWalk::Open() const {
  CSummaryRows::SOpen open{ShowsFloors(), 0, false};
  while (Opens(open.sysCodes)) {
    ++open.sysCodes;
  }
  open.lines = open.sysCodes > 0 && level_ == shape_.lineLevel;
  return open;
}

// The rows of what a filter leaves of the system codes.
SWholeSum CSummaryWalk::AddParts(CCellBlock& out, const SysCodes& sysCodes,
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
  title_.clear();
  AppendTitle(title_, node);
  SysCodeCells(AddingTo(out), depth, CCellSource::Copied(title_), unit_, sum, references);
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
  title_.clear();
  AppendFormula(title_, result, floorCount);
  LineCells(AddingTo(out), number, CCellSource::Copied(title_), unit_, quantity, references);
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

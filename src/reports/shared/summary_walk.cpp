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

// The name with its remark, which is put together in `buffer`.
std::wstring_view Title(const CReportSysCode& node, std::wstring& buffer) {
  if (node.remark.empty()) {
    return node.name;
  }
  buffer = node.name;
  buffer += L'(';
  buffer += node.remark;
  buffer += L')';
  return buffer;
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
  if (choice == EFirstSysCodes::BySortNumber && sysCodes.size() > 1) {
    std::stable_sort(sysCodes.begin(), sysCodes.end(),
                     [](const auto* a, const auto* b) { return a->sortId < b->sortId; });
    // Of each run of equal numbers the last one, the greatest name, stays.
    const auto first =
        std::unique(sysCodes.rbegin(), sysCodes.rend(),
                    [](const auto* a, const auto* b) { return a->sortId == b->sortId; });
    sysCodes.erase(sysCodes.begin(), first.base());
  }
  return sysCodes;
}

bool CSummaryWalk::AddFloors(double& sum, CCellBlock& out, const Report::NodeMap& children,
                             const SWholeSum& whole, std::wstring_view unit, int level) {
  unit_ = unit;
  SetLevel(level);
  if (takesWholeFloors_ && request_.condition.floors.empty() && !shape_.floorRow.Holds(level_)) {
    sum += whole.quantity;
    return whole.counted;
  }
  bool counted = false;
  std::set<CFloorResultData> blocks;
  ForEachChosenFloor<EPairKey::DrawingFloor>(
      children, request_.condition.floors,
      [&](const CReportFloor& node, const CPickedFloor& picked, const std::wstring& drawingFloor,
          const std::wstring& floor) {
        CCellBlock block;
        const bool showsDrawing = shape_.floorCell == EFloorCell::DrawingFloor;
        counted |= AddFloor(sum, block, node, picked, showsDrawing ? drawingFloor : floor);
        if (!block.Empty()) {
          CFloorResultData result(floor);
          result.SetResult(std::move(block));
          PutBlock(blocks, std::move(result));
        }
      });
  CReportDataMethod::ChangeFloorResult(out, std::move(blocks));
  return counted;
}

void CSummaryWalk::SetLevel(int level) {
  level_ = level;
  takesWholeCodes_ = level < shape_.firstSysCodeLevel && sections_.TakesAll();
  takesWholeFloors_ = takesWholeCodes_ && request_.sysCodes.empty();
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

bool CSummaryWalk::AddFloor(double& sum, CCellBlock& out, const CReportFloor& node,
                            const CPickedFloor& picked, const std::wstring& shownFloor) {
  SWholeSum local;
  CCellBlock rows;
  if (takesWholeFloors_ && !picked.IsOther()) {
    local = node.whole;
  } else {
    if (level_ >= shape_.firstSysCodeLevel) {
      chain_ = std::make_unique<SKeptText>();
    }
    const std::vector<CReportSysCode*> sysCodes = FirstSysCodesOf(node, shape_.firstSysCodes);
    if (chain_ != nullptr && level_ == shape_.lineLevel) {
      PrefetchExpressions(sysCodes);
    }
    for (const CReportSysCode* sysCode : sysCodes) {
      local.counted |= AddSysCode(local.quantity, rows, *sysCode, picked);
    }
    FinishChain(rows);
  }
  if (!local.counted) {
    return false;
  }
  sum += local.quantity;
  if (shape_.floorRow.Holds(level_)) {
    out.AddCells(L"@F", node.name, shownFloor, unit_, local.quantity);
  }
  out.Append(std::move(rows));
  return true;
}

bool CSummaryWalk::Enter(const CReportSysCode& node, bool isOther) {
  const std::size_t depth = frames_.size();
  if (depth < request_.sysCodes.size() && !request_.sysCodes[depth].contains(node.name)) {
    return false;
  }
  SFrame& frame = frames_.emplace_back(node, chainSize_);
  const bool filtersBelow = depth + 1 < request_.sysCodes.size();
  if (takesWholeCodes_ && !isOther && !filtersBelow && node.HasWhole()) {
    frame.sum = node.whole.quantity;
    frame.counted = node.whole.counted;
    frame.next = node.children.InOrder().end();
  }
  return true;
}

// Keeps its own stack: a code may have any number of levels.
bool CSummaryWalk::AddSysCode(double& sum, CCellBlock& out, const CReportSysCode& first,
                              const CPickedFloor& picked) {
  if (!Enter(first, picked.IsOther())) {
    return false;
  }
  while (true) {
    SFrame& frame = frames_.back();
    if (frame.next != frame.node.children.InOrder().end()) {
      const IReportDataNode& child = **frame.next++;
      if (const auto* sysCode = NodeAs<CReportSysCode>(&child)) {
        Enter(*sysCode, picked.IsOther());
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

CCellBlock CSummaryWalk::SysCodeRows(SFrame& frame, std::size_t depth) const {
  CCellBlock rows;
  const bool isOpen =
      static_cast<long long>(depth) + shape_.firstSysCodeLevel <= static_cast<long long>(level_);
  if (isOpen && depth < kSysCodeMarkers.size()) {
    std::wstring title;
    rows.AddCells(kSysCodeMarkers[depth], CCellSource::Copied(Title(frame.node, title)), unit_,
                  frame.sum, ChainFrom(frame.chainBegin));
    CReportDataMethod::ChangeSysResult(rows, std::move(frame.blocks));
    rows.Append(std::move(frame.lines));
  }
  return rows;
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
      AddLine(frame, result, quantity, floorCount, chainBegin);
    }
  }
  return true;
}

void CSummaryWalk::AddLine(SFrame& frame, const CReportResult& result, double quantity,
                           int floorCount, std::size_t chainBegin) const {
  std::wstring composed;
  CCellSource formula = result.expression;
  if (floorCount > 1 || result.components.size() > 1) {
    composed = result.GetRepeatFormula();
    if (floorCount > 1) {
      composed = MultipliedInBrackets(composed, floorCount, L"层");
    }
    formula = CCellSource::Copied(composed);
  }
  constexpr std::wstring_view kCircuit = L"回路";
  std::wstring circuit(kCircuit);
  AppendInt(circuit, frame.lineNumber);
  frame.lines.AddCells(L"@L", std::move(circuit), formula, unit_, quantity, ChainFrom(chainBegin));
  ++frame.lineNumber;
}

CCellSource CSummaryWalk::ChainFrom(std::size_t begin) const {
  return CCellSource::Slice(*chain_, begin, chainSize_ - begin);
}

void CSummaryWalk::FinishChain(CCellBlock& rows) {
  if (!rows.Empty() && chain_ != nullptr) {
    chain_->text.reserve(chainSize_);
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = 0; i < references_.size(); ++i) {
      if (i + kAhead < references_.size()) {
        references_[i + kAhead]->PrefetchComponents();
      }
      if (shape_.chainMark == EChainMark::Ahead) {
        chain_->text += L'$';
      }
      references_[i]->AppendComponentText(chain_->text);
      if (shape_.chainMark == EChainMark::Behind) {
        chain_->text += L'$';
      }
    }
    rows.Keep(std::move(chain_));
  }
  chain_.reset();
  references_.clear();
  chainSize_ = 0;
}

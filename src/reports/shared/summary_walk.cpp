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

std::wstring TitleWithRemark(const CReportSysCode& node) {
  std::wstring title = node.name;
  if (!node.remark.empty()) {
    title += L'(';
    title += node.remark;
    title += L')';
  }
  return title;
}

}  // namespace

bool CSummaryWalk::AddFloors(double& sum, CCellBlock& out, const Report::NodeMap& children,
                             std::wstring_view unit, int level) {
  unit_ = unit;
  level_ = level;
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

bool CSummaryWalk::AddFloor(double& sum, CCellBlock& out, const CReportFloor& node,
                            const CPickedFloor& picked, const std::wstring& shownFloor) {
  double local = 0;
  bool counted = false;
  CCellBlock rows;
  references_.clear();
  for (const CReportSysCode* sysCode : FirstSysCodes(node)) {
    counted |= AddSysCode(local, rows, *sysCode, picked);
  }
  if (!counted) {
    return false;
  }
  sum += local;
  if (shape_.floorRow.Holds(level_)) {
    out.AddTexts(L"@F", node.name, shownFloor, unit_, NumberText(local));
  }
  out.Append(std::move(rows));
  return true;
}

std::vector<const CReportSysCode*> CSummaryWalk::FirstSysCodes(const CReportFloor& node) const {
  std::vector<const CReportSysCode*> sysCodes;
  sysCodes.reserve(node.children.size());
  ForEachChild<CReportSysCode>(
      node.children, [&](const CReportSysCode& sysCode) { sysCodes.push_back(&sysCode); });
  if (shape_.firstSysCodes == EFirstSysCodes::BySortNumber) {
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

bool CSummaryWalk::Enter(const CReportSysCode& node) {
  const std::size_t depth = frames_.size();
  if (depth < request_.sysCodes.size() && !request_.sysCodes[depth].contains(node.name)) {
    return false;
  }
  frames_.emplace_back(node, references_.size());
  return true;
}

// Keeps its own stack: a code may have any number of levels.
bool CSummaryWalk::AddSysCode(double& sum, CCellBlock& out, const CReportSysCode& first,
                              const CPickedFloor& picked) {
  if (!Enter(first)) {
    return false;
  }
  while (true) {
    SFrame& frame = frames_.back();
    if (frame.next != frame.node.children.InOrder().end()) {
      const IReportDataNode& child = **frame.next++;
      if (const auto* sysCode = NodeAs<CReportSysCode>(&child)) {
        Enter(*sysCode);
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
    rows.AddTexts(kSysCodeMarkers[depth], TitleWithRemark(frame.node), unit_, NumberText(frame.sum),
                  ChainText(frame.chainBegin));
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
  const double quantity = static_cast<double>(result.components.size()) * result.quantity *
                          static_cast<double>(floorCount);
  frame.sum += quantity;
  if (level_ >= shape_.firstSysCodeLevel) {
    references_.push_back(&result);
  }
  if (level_ == shape_.lineLevel) {
    AddLine(frame, result, quantity, floorCount);
  }
  return true;
}

void CSummaryWalk::AddLine(SFrame& frame, const CReportResult& result, double quantity,
                           int floorCount) const {
  std::wstring text = result.GetRepeatFormula();
  if (floorCount > 1) {
    text = MultipliedInBrackets(text, floorCount, L"层");
  }
  frame.lines.AddTexts(L"@L", L"回路" + IntText(frame.lineNumber), std::move(text), unit_,
                       NumberText(quantity), ChainText(references_.size() - 1));
  ++frame.lineNumber;
}

std::wstring CSummaryWalk::ChainText(std::size_t begin) const {
  std::size_t size = references_.size() - begin;
  for (std::size_t i = begin; i < references_.size(); ++i) {
    size += references_[i]->ComponentTextSize();
  }
  std::wstring text;
  text.reserve(size);
  for (std::size_t i = begin; i < references_.size(); ++i) {
    if (shape_.chainMark == EChainMark::Ahead) {
      text += L'$';
    }
    references_[i]->AppendComponentText(text);
    if (shape_.chainMark == EChainMark::Behind) {
      text += L'$';
    }
  }
  return text;
}

// The blocks of floors in the order of their rows.
#ifndef TALLY_REPORTS_SHARED_FLOOR_BLOCKS_H_
#define TALLY_REPORTS_SHARED_FLOOR_BLOCKS_H_

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "report_model/cell_block.h"
#include "report_model/floor_grade.h"
#include "report_model/report_data_node.h"

/// Does what a set of CFloorResultData does, whose order is a strict one: of equal floors the first
/// one to be put stays.
class CFloorBlocks {
 public:
  /// `floor` is the text by which the node is sorted, most often its own name.
  void Put(const CReportFloor& node, const std::wstring& floor, CCellBlock&& block) {
    blocks_.push_back({floor == node.name ? node.grade : SFloorGrade(floor), std::move(block)});
  }

  /// Moves the blocks behind `out`. There are none afterwards.
  void MoveTo(CCellBlock& out) {
    order_.resize(blocks_.size());
    for (std::size_t i = 0; i < order_.size(); ++i) {
      order_[i] = i;
    }
    std::sort(order_.begin(), order_.end(), [this](std::size_t a, std::size_t b) {
      const SFloorGrade& left = blocks_[a].grade;
      const SFloorGrade& right = blocks_[b].grade;
      return left == right ? a < b : left < right;
    });
    const SFloorGrade* last = nullptr;
    for (const std::size_t at : order_) {
      SBlock& block = blocks_[at];
      if (last == nullptr || *last != block.grade) {
        out.Append(std::move(block.cells));
        last = &block.grade;
      }
    }
    blocks_.clear();
  }

 private:
  struct SBlock {
    SFloorGrade grade;
    CCellBlock cells;
  };
  std::vector<SBlock> blocks_;
  std::vector<std::size_t> order_;
};

#endif  // TALLY_REPORTS_SHARED_FLOOR_BLOCKS_H_

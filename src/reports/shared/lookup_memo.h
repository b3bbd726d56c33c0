// Look-ups remembered by record, so that a fold compares texts once for each distinct pair of
// parent and record.
#ifndef TALLY_REPORTS_SHARED_LOOKUP_MEMO_H_
#define TALLY_REPORTS_SHARED_LOOKUP_MEMO_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "report_model/report_data_node.h"

/// One level of a fold: (children of the parent, record) to the node that the look-up answered,
/// null included. A look-up may be remembered because the same record in the same children always
/// leads to the same node.
class CLookupMemo {
 public:
  /// The remembered node; `lookUp()` answers it the first time.
  template <class TLookUp>
  IReportDataNode* Find(const Report::NodeMap* children, std::uint64_t record, TLookUp&& lookUp) {
    // Rows tend to come in runs that share their upper levels.
    if (children == last_.children && record == last_.record) {
      return last_.node;
    }
    if (2 * (used_ + 1) > slots_.size()) {
      Grow();
    }
    SSlot& slot = slots_[Place(slots_, children, record)];
    if (slot.children == nullptr) {
      IReportDataNode* node = lookUp();
      slot = {children, record, node};
      ++used_;
    }
    last_ = slot;
    return slot.node;
  }

 private:
  struct SSlot {
    const Report::NodeMap* children = nullptr;
    std::uint64_t record = 0;
    IReportDataNode* node = nullptr;
  };
  static constexpr std::size_t kFirstSize = 64;

  // The slot that holds the key, or the free one where it belongs. REQUIRES: a free slot.
  static std::size_t Place(const std::vector<SSlot>& slots, const Report::NodeMap* children,
                           std::uint64_t record);
  void Grow();

  std::vector<SSlot> slots_;
  std::size_t used_ = 0;
  SSlot last_;
};

#endif  // TALLY_REPORTS_SHARED_LOOKUP_MEMO_H_

// The order of system codes within a tree.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_SYS_CODE_ORDER_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_SYS_CODE_ORDER_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "report_model/text_ref.h"
#include "result_store/db_records.h"

/// Numbers the system codes of a set, completed as their nodes are, in the order of the walk: level
/// by level, so that all codes below one have numbers side by side.
class CSysCodeOrder {
 public:
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
  /// Numbers from `first` up to that before `last`.
  struct SRange {
    std::uint32_t first;
    std::uint32_t last;
    bool Holds(std::uint32_t number) const { return number >= first && number < last; }
  };

  /// Codes that share their first `systemLevel` levels are of one system.
  CSysCodeOrder(const std::vector<KorDMRec::SKorDMSysCodeRec>& records, int systemLevel);

  /// Whether a code goes on where another one ends.
  bool GoesOn() const { return goesOn_; }
  /// The number of a record; kNone for the empty code.
  std::uint32_t OfRecord(int record) const { return ofRecord_[static_cast<std::size_t>(record)]; }
  /// The number of a completed code. REQUIRES: a record has it.
  std::uint32_t Of(std::wstring_view fullName) const { return Below(fullName).first; }
  /// The codes at and below a path of any number of levels.
  SRange Below(std::wstring_view path) const;
  /// A text that orders as the numbers do.
  CTextRef Key(std::uint32_t number) const {
    return number == kNone ? CTextRef() : CTextRef(keys_[number]);
  }
  /// The number of a code's system.
  std::uint32_t System(std::uint32_t number) const { return systems_[number]; }

 private:
  std::vector<std::wstring> keys_;
  std::vector<std::uint32_t> systems_;
  std::vector<std::uint32_t> ofRecord_;
  bool goesOn_ = false;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_SYS_CODE_ORDER_H_

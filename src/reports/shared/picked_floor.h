// The rule of floor pairs.
#ifndef TALLY_REPORTS_SHARED_PICKED_FLOOR_H_
#define TALLY_REPORTS_SHARED_PICKED_FLOOR_H_

#include <string>
#include <string_view>

#include "report_model/report_data_method.h"
#include "report_model/report_data_node.h"

/// The two floors of a pair of the filter, or none. Where the first is given and the second is
/// another, the user has picked one floor out of a repeated one: only results of either floor
/// count, and they count for as many floors as the second stands for. Otherwise every result
/// counts, for as many floors as its own floor text stands for. Which member of a pair is the first
/// differs between reports and is theirs to say. The texts must outlive the object.
class CPickedFloor {
 public:
  CPickedFloor() = default;
  CPickedFloor(const std::wstring& first, const std::wstring& second)
      : first_(&first),
        second_(&second),
        isOther_(!first.empty() && second != first),
        count_(isOther_ ? CReportDataMethod::GetFloorCount(second) : 0) {}

  /// One floor was picked out of a repeated one.
  bool IsOther() const { return isOther_; }
  /// The floor that decides the count. REQUIRES: IsOther.
  const std::wstring& SecondText() const { return *second_; }

  /// Whether a result belongs to the pair.
  bool Takes(const SResultIdentity& result) const {
    return !isOther_ || result.floorText == *first_ || result.floorText == *second_;
  }
  /// The floor text that decides the count, and the count.
  std::wstring_view TextFor(const SResultIdentity& result) const {
    return isOther_ ? std::wstring_view(*second_) : result.floorText;
  }
  int CountFor(const SResultIdentity& result) const {
    return isOther_ ? count_ : result.floorCount;
  }

 private:
  const std::wstring* first_ = nullptr;
  const std::wstring* second_ = nullptr;
  bool isOther_ = false;
  int count_ = 0;
};

#endif  // TALLY_REPORTS_SHARED_PICKED_FLOOR_H_

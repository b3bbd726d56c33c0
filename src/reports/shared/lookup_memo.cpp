#include "reports/shared/lookup_memo.h"

#include <algorithm>
#include <utility>

std::size_t CLookupMemo::Place(const std::vector<SSlot>& slots, const Report::NodeMap* children,
                               std::uint64_t record) {
  // Multiplications by odd constants and a final fold spread both parts over the low bits; sizes
  // are powers of two.
  constexpr std::uint64_t kSpreadParent = 0x9E3779B97F4A7C15U;
  constexpr std::uint64_t kSpreadRecord = 0xC2B2AE3D27D4EB4FU;
  std::uint64_t hash = reinterpret_cast<std::uintptr_t>(children) * kSpreadParent;
  hash ^= (record + kSpreadParent) * kSpreadRecord;
  hash ^= hash >> 32U;
  hash *= kSpreadParent;
  hash ^= hash >> 29U;
  const std::size_t mask = slots.size() - 1;
  std::size_t place = static_cast<std::size_t>(hash) & mask;
  while (slots[place].children != nullptr &&
         (slots[place].children != children || slots[place].record != record)) {
    place = (place + 1) & mask;
  }
  return place;
}

void CLookupMemo::Grow() {
  std::vector<SSlot> grown(std::max(kFirstSize, 2 * slots_.size()));
  for (const SSlot& slot : slots_) {
    if (slot.children != nullptr) {
      grown[Place(grown, slot.children, slot.record)] = slot;
    }
  }
  slots_ = std::move(grown);
}

#include "platform/portable/id_positions.h"

#include <algorithm>

namespace {

constexpr int kMissing = -1;  // wanted, without a position
constexpr int kUnwanted = -2;

// A table may have this many places for each entry of the column.
constexpr std::uint64_t kPlacesPerEntry = 8;
constexpr std::uint64_t kFreePlaces = 4096;

// Differences of ids are taken without a sign: they can exceed what an id can hold.
std::uint64_t Distance(std::int64_t from, std::int64_t to) {
  return static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
}

}  // namespace

CIdPositions::CIdPositions(const std::vector<std::int64_t>& column) {
  if (column.empty()) {
    return;
  }
  const auto [least, greatest] = std::minmax_element(column.begin(), column.end());
  least_ = *least;
  const std::uint64_t last = Distance(*least, *greatest);
  isTable_ = last < kFreePlaces || (last - kFreePlaces) / kPlacesPerEntry < column.size();
  if (isTable_) {
    positions_.assign(static_cast<std::size_t>(last) + 1, kUnwanted);
    for (const std::int64_t id : column) {
      int& place = positions_[static_cast<std::size_t>(Distance(least_, id))];
      count_ += place == kUnwanted ? 1 : 0;
      place = kMissing;
    }
    return;
  }
  ids_ = column;
  std::sort(ids_.begin(), ids_.end());
  ids_.erase(std::unique(ids_.begin(), ids_.end()), ids_.end());
  count_ = ids_.size();
  positions_.assign(count_, kMissing);
}

std::size_t CIdPositions::PlaceOf(std::int64_t id) const {
  if (isTable_) {
    const std::uint64_t place = Distance(least_, id);
    return place < positions_.size() ? static_cast<std::size_t>(place) : positions_.size();
  }
  const auto found = std::lower_bound(ids_.begin(), ids_.end(), id);
  return found != ids_.end() && *found == id ? static_cast<std::size_t>(found - ids_.begin())
                                             : positions_.size();
}

const int* CIdPositions::Find(std::int64_t id) const {
  const std::size_t place = PlaceOf(id);
  return place < positions_.size() ? &positions_[place] : nullptr;
}

int* CIdPositions::Find(std::int64_t id) {
  const std::size_t place = PlaceOf(id);
  return place < positions_.size() ? &positions_[place] : nullptr;
}

bool CIdPositions::Place(std::int64_t id, int position) {
  int* place = Find(id);
  if (place == nullptr || *place != kMissing) {
    return false;
  }
  *place = position;
  return true;
}

int CIdPositions::Position(std::int64_t id) const {
  const int* place = Find(id);
  return place == nullptr || *place < 0 ? kMissing : *place;
}

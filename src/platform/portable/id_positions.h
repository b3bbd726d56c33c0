// Where the records that rows refer to stand in their vector.
#ifndef TALLY_PLATFORM_PORTABLE_ID_POSITIONS_H_
#define TALLY_PLATFORM_PORTABLE_ID_POSITIONS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

/// Maps the ids in one column of a row table to positions. Ids that lie close together are looked
/// up in a table, others by binary search, so that memory follows the number of ids and never their
/// size.
class CIdPositions {
 public:
  /// Wants every id of the column, each once.
  explicit CIdPositions(const std::vector<std::int64_t>& column);

  /// How many different ids are wanted, and the least of them (0 where there are none).
  std::size_t Count() const { return count_; }
  std::int64_t Least() const { return least_; }

  /// Gives the id its position; false where it is not wanted or has one already.
  bool Place(std::int64_t id, int position);
  /// Moves the id, which must have a position.
  void Replace(std::int64_t id, int position) { *Find(id) = position; }
  /// The position; -1 for an id without one.
  int Position(std::int64_t id) const;

 private:
  // Place of an id in positions_, or their number where it has none.
  std::size_t PlaceOf(std::int64_t id) const;
  const int* Find(std::int64_t id) const;
  int* Find(std::int64_t id);

  std::int64_t least_ = 0;
  std::size_t count_ = 0;
  bool isTable_ = true;
  std::vector<std::int64_t> ids_;  // ascending; empty where positions_ is a table from least_ on
  std::vector<int> positions_;
};

#endif  // TALLY_PLATFORM_PORTABLE_ID_POSITIONS_H_

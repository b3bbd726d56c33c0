// Memory for the rows of cell blocks.
#ifndef TALLY_REPORT_MODEL_ROW_MEMORY_H_
#define TALLY_REPORT_MODEL_ROW_MEMORY_H_

#include <cstddef>

/// Rows are many, small, and given back in nearly the order in which they were taken: they share
/// chunks, each of which is freed with the last of its rows. A thread has one chunk that is being
/// filled. REQUIRES: a row is given back by the thread that took it.
class CRowMemory {
 public:
  struct SChunk {
    std::size_t rows = 0;  ///< that are taken
  };
  struct SPlace {
    void* row;
    SChunk* chunk;
  };

  /// Memory for a row of `size` bytes, aligned for pointers. Throws std::bad_alloc.
  static SPlace Take(std::size_t size);
  /// Gives a row of `chunk` back.
  static void GiveBack(SChunk* chunk) noexcept;
};

#endif  // TALLY_REPORT_MODEL_ROW_MEMORY_H_

// How much heap the program holds, counted by its own operator new.
#ifndef TALLY_BENCH_HEAP_USE_H_
#define TALLY_BENCH_HEAP_USE_H_

#include <cstddef>

/// Bytes that operator new has given out and not got back, as the allocator rounds them up
/// (malloc_usable_size). What C libraries take by malloc, SQLite's page cache first of all, is not
/// in it. For one thread.
class CHeapUse {
 public:
  static std::size_t Current();
  /// The highest Current since RestartPeak.
  static std::size_t Peak();
  static void RestartPeak();
  /// Has the allocator do what it puts off when many small blocks are freed: glibc joins them when
  /// the next large block is asked for. Whatever is timed next does not pay for them then.
  static void Settle();
};

#endif  // TALLY_BENCH_HEAP_USE_H_

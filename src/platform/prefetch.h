// Asks the processor for memory that will be read soon.
#ifndef TALLY_PLATFORM_PREFETCH_H_
#define TALLY_PLATFORM_PREFETCH_H_

/// A hint without any other effect; any address will do.
inline void Prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
  __builtin_prefetch(address);
#endif
}

#endif  // TALLY_PLATFORM_PREFETCH_H_

// Brings memory near that will be read soon.
#ifndef TALLY_PLATFORM_PREFETCH_H_
#define TALLY_PLATFORM_PREFETCH_H_

/// Reads a byte and does without it: later instructions go on before it arrives. The instruction
/// made for this purpose does nothing where a processor drops it, as some do when the page is not
/// among those last used, which is the rule for records that lie far apart.
/// REQUIRES: `address` is null or can be read.
inline void Prefetch(const void* address) {
  if (address != nullptr) {
    static_cast<void>(*static_cast<const volatile char*>(address));
  }
}

#endif  // TALLY_PLATFORM_PREFETCH_H_

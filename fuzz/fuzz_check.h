// What a fuzzer does where the system breaks a promise.
#ifndef TALLY_FUZZ_FUZZ_CHECK_H_
#define TALLY_FUZZ_FUZZ_CHECK_H_

#include <cstdio>
#include <cstdlib>

/// Ends the process, so that libFuzzer keeps the input, where `holds` is false.
inline void Require(bool holds, const char* promise) {
  if (!holds) {
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
  }
}

#endif  // TALLY_FUZZ_FUZZ_CHECK_H_

#include "host/run_stats.h"

#include <sys/resource.h>

#include <cstdio>
#include <string_view>

namespace {

constexpr std::string_view kNames[] = {"open", "read", "fold", "walk", "write"};

template <class... TValues>
std::string Line(const char* format, TValues... values) {
  char line[80];
  const int size = std::snprintf(line, sizeof line, format, values...);
  return std::string(line, static_cast<std::size_t>(size));
}

// Linux counts in KiB.
double PeakMiB() {
  rusage usage = {};
  return getrusage(RUSAGE_SELF, &usage) == 0 ? static_cast<double>(usage.ru_maxrss) / 1024 : 0;
}

}  // namespace

ERunPhase CRunStats::Enter(ERunPhase phase) {
  const Clock::time_point now = Clock::now();
  times_[static_cast<std::size_t>(phase_)] += now - entered_;
  entered_ = now;
  return std::exchange(phase_, phase);
}

std::string CRunStats::Text() {
  Enter(phase_);
  std::string text;
  for (std::size_t i = 0; i < kPhases; ++i) {
    const std::chrono::duration<double, std::milli> time = times_[i];
    text += Line("%-6s %12.3f ms\n", std::string(kNames[i]).c_str(), time.count());
  }
  text += Line("%-6s %12zu\n", "rows", records_);
  text += Line("%-6s %12zu\n", "nodes", nodes_);
  text += Line("%-6s %12zu\n", "cells", cells_);
  text += Line("%-6s %12.1f MiB\n", "memory", PeakMiB());
  return text;
}

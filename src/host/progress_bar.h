// How far a long command is.
#ifndef TALLY_HOST_PROGRESS_BAR_H_
#define TALLY_HOST_PROGRESS_BAR_H_

#include <cstddef>
#include <cstdio>
#include <string>

/// A line of a terminal that is written over at each step and removed by the destructor. Writes
/// nothing to a stream that is no terminal.
class CProgressBar {
 public:
  /// `stream` must outlive the bar.
  CProgressBar(std::FILE* stream, std::size_t steps);
  ~CProgressBar();
  CProgressBar(const CProgressBar&) = delete;
  CProgressBar& operator=(const CProgressBar&) = delete;

  /// Begins the next step; `name` is UTF-8.
  void Step(const std::string& name);

 private:
  void Write(const std::string& text);

  std::FILE* stream_;
  bool isTerminal_;
  std::size_t steps_;
  std::size_t begun_ = 0;
};

#endif  // TALLY_HOST_PROGRESS_BAR_H_

// What a run of the program took.
#ifndef TALLY_HOST_RUN_STATS_H_
#define TALLY_HOST_RUN_STATS_H_

#include <array>
#include <chrono>
#include <cstddef>
#include <string>
#include <utility>

/// The parts of a run that are timed; Read is what the database reader takes.
enum class ERunPhase { Open, Read, Fold, Walk, Write };

/// Times and sizes, added up. A phase that runs inside another one counts for itself alone.
class CRunStats {
 public:
  using Clock = std::chrono::steady_clock;

  /// Times what it encloses.
  class CTimer {
   public:
    CTimer(CRunStats& stats, ERunPhase phase) : stats_(stats), before_(stats.Enter(phase)) {}
    ~CTimer() { stats_.Enter(before_); }
    CTimer(const CTimer&) = delete;
    CTimer& operator=(const CTimer&) = delete;

   private:
    CRunStats& stats_;
    ERunPhase before_;
  };

  /// Starts in phase Open.
  CRunStats() = default;
  CRunStats(const CRunStats&) = delete;
  CRunStats& operator=(const CRunStats&) = delete;

  /// The clock goes on in that phase; answers the one before.
  ERunPhase Enter(ERunPhase phase);

  void AddRecords(std::size_t count) { records_ += count; }
  void AddNodes(std::size_t count) { nodes_ += count; }
  void AddCells(std::size_t count) { cells_ += count; }

  /// A line for each phase and size, with the most memory that the process has held.
  std::string Text();

 private:
  static constexpr std::size_t kPhases = 5;

  std::array<Clock::duration, kPhases> times_ = {};
  ERunPhase phase_ = ERunPhase::Open;
  Clock::time_point entered_ = Clock::now();
  std::size_t records_ = 0;
  std::size_t nodes_ = 0;
  std::size_t cells_ = 0;
};

#endif  // TALLY_HOST_RUN_STATS_H_

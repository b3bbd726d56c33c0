// Which project the portable services answer for, and what went wrong last.
#ifndef TALLY_PLATFORM_PORTABLE_PROJECT_SOURCE_H_
#define TALLY_PLATFORM_PORTABLE_PROJECT_SOURCE_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/db_operator.h"

/// Shared by the portable CDbOperator and the settings and libraries that follow it.
class CProjectSource {
 public:
  /// The one that all services made by MakePortable share.
  static const std::shared_ptr<CProjectSource>& OfProcess();

  /// The project read last; empty before the first read.
  const std::wstring& Path() const { return path_; }
  /// Grows with every read: what was cached under an older number is out of date.
  std::uint64_t Generation() const { return generation_; }
  void BeginRead(const std::wstring& path);

  const std::optional<SDbFailure>& LastFailure() const { return failure_; }
  void RecordFailure(const SDbFailure& failure) { failure_ = failure; }
  void ForgetFailure() { failure_.reset(); }

 private:
  std::wstring path_;
  std::uint64_t generation_ = 0;
  std::optional<SDbFailure> failure_;
};

#endif  // TALLY_PLATFORM_PORTABLE_PROJECT_SOURCE_H_

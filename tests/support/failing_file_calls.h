// File operations of which one fails.
#ifndef TALLY_TESTS_SUPPORT_FAILING_FILE_CALLS_H_
#define TALLY_TESTS_SUPPORT_FAILING_FILE_CALLS_H_

#include <cerrno>
#include <string>
#include <utility>

#include "platform/portable/file_calls.h"

namespace tally_test {

/// The system's operations, until the call that is to fail. `steps` counts them all; those that put
/// things back after a failure (close, remove) never fail.
class CFailingFileCalls final : public CFileCalls {
 public:
  int failAt = 0;  ///< the number of the failing call, from 1; 0: none
  int error = ENOSPC;
  bool writesBitByBit = false;
  int steps = 0;
  std::string failed;  ///< the operation that failed

  int Stat(const std::filesystem::path& file, struct stat& status) override {
    return Fails("stat") ? -1 : CFileCalls::Stat(file, status);
  }
  int Access(const std::filesystem::path& file, int mode) override {
    return Fails("access") ? -1 : CFileCalls::Access(file, mode);
  }
  int Open(const std::filesystem::path& file, int flags, mode_t mode) override {
    return Fails("open") ? -1 : CFileCalls::Open(file, flags, mode);
  }
  int ChangeMode(int descriptor, mode_t mode) override {
    return Fails("change mode") ? -1 : CFileCalls::ChangeMode(descriptor, mode);
  }
  ssize_t Write(int descriptor, const void* bytes, std::size_t size) override {
    if (Fails("write")) {
      return -1;
    }
    return CFileCalls::Write(descriptor, bytes, writesBitByBit && size > 7 ? 7 : size);
  }
  int Flush(int descriptor) override { return Fails("flush") ? -1 : CFileCalls::Flush(descriptor); }
  int Close(int descriptor) override {
    const bool fails = Fails("close");
    const int result = CFileCalls::Close(descriptor);
    return fails ? -1 : result;
  }
  int Rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    return Fails("rename") ? -1 : CFileCalls::Rename(from, to);
  }

 private:
  bool Fails(const char* operation) {
    if (++steps != failAt) {
      return false;
    }
    failed = operation;
    errno = error;
    return true;
  }
};

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_FAILING_FILE_CALLS_H_

// The system calls that replacing a file is made of.
#ifndef TALLY_PLATFORM_PORTABLE_FILE_CALLS_H_
#define TALLY_PLATFORM_PORTABLE_FILE_CALLS_H_

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <filesystem>

/// Each operation is the system's of that name, with its arguments, its answer and errno; tests put
/// failing ones in their place.
class CFileCalls {
 public:
  CFileCalls() = default;
  CFileCalls(const CFileCalls&) = delete;
  CFileCalls& operator=(const CFileCalls&) = delete;
  virtual ~CFileCalls() = default;

  virtual int Stat(const std::filesystem::path& file, struct stat& status);
  virtual int Access(const std::filesystem::path& file, int mode);
  virtual int Open(const std::filesystem::path& file, int flags, mode_t mode);
  virtual int ChangeOwner(int descriptor, uid_t user, gid_t group);
  virtual int ChangeMode(int descriptor, mode_t mode);
  virtual ssize_t Write(int descriptor, const void* bytes, std::size_t size);
  virtual int Flush(int descriptor);
  virtual int Close(int descriptor);
  virtual int Rename(const std::filesystem::path& from, const std::filesystem::path& to);
  virtual int Remove(const std::filesystem::path& file);
};

#endif  // TALLY_PLATFORM_PORTABLE_FILE_CALLS_H_

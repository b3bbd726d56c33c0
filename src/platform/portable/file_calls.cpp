#include "platform/portable/file_calls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

int CFileCalls::Stat(const std::filesystem::path& file, struct stat& status) {
  return ::stat(file.c_str(), &status);
}

int CFileCalls::Access(const std::filesystem::path& file, int mode) {
  return ::access(file.c_str(), mode);
}

int CFileCalls::Open(const std::filesystem::path& file, int flags, mode_t mode) {
  return ::open(file.c_str(), flags, mode);
}

int CFileCalls::ChangeOwner(int descriptor, uid_t user, gid_t group) {
  return ::fchown(descriptor, user, group);
}

int CFileCalls::ChangeMode(int descriptor, mode_t mode) {
  return ::fchmod(descriptor, mode);
}

ssize_t CFileCalls::Write(int descriptor, const void* bytes, std::size_t size) {
  return ::write(descriptor, bytes, size);
}

int CFileCalls::Flush(int descriptor) {
  return ::fsync(descriptor);
}

int CFileCalls::Close(int descriptor) {
  return ::close(descriptor);
}

int CFileCalls::Rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  return ::rename(from.c_str(), to.c_str());
}

int CFileCalls::Remove(const std::filesystem::path& file) {
  return ::unlink(file.c_str());
}

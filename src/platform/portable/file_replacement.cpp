#include "platform/portable/file_replacement.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <utility>

#include "platform/portable/file_calls.h"

namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;  // as many as the system follows
constexpr int kMostNames = 100;
constexpr mode_t kAllPermissions = 07777;
constexpr mode_t kNewFile = 0666;

std::error_code LastError() {
  return {errno, std::generic_category()};
}

// The file that a name stands for; the link itself must stay.
std::error_code FollowLinks(fs::path& file) {
  std::error_code error;
  for (int i = 0; i < kMostLinks; ++i) {
    if (!fs::is_symlink(fs::symlink_status(file, error))) {
      return {};
    }
    const fs::path target = fs::read_symlink(file, error);
    if (error) {
      return error;
    }
    file = file.parent_path() / target;  // an absolute target replaces the folder
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// The new name is on the disk only when its folder is.
void FlushFolder(const fs::path& folder, CFileCalls& calls) {
  const int descriptor = calls.Open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
  if (descriptor >= 0) {
    static_cast<void>(calls.Flush(descriptor));
    static_cast<void>(calls.Close(descriptor));
  }
}

}  // namespace

// The file beside the one to be replaced. Removed by the destructor, unless it took the other's
// place.
class CFileReplacement::CFileBeside {
 public:
  // `old` is the file to be replaced; null where there is none yet.
  CFileBeside(const fs::path& target, const struct stat* old, CFileCalls& calls)
      : target_(target), hasOld_(old != nullptr), calls_(calls) {
    if (hasOld_) {
      old_ = *old;
    }
  }
  CFileBeside(const CFileBeside&) = delete;
  CFileBeside& operator=(const CFileBeside&) = delete;
  ~CFileBeside() {
    Close();
    if (exists_) {
      calls_.Remove(name_);
    }
  }

  // Each is a step of the replacement; false leaves errno.
  bool Create();
  bool TakeOverOwner();
  bool Fill(std::string_view bytes);
  bool Flush() { return calls_.Flush(descriptor_) == 0; }
  bool Close();
  bool TakePlace();

 private:
  const fs::path& target_;
  const bool hasOld_;
  struct stat old_ = {};
  CFileCalls& calls_;
  fs::path name_;
  int descriptor_ = -1;
  bool exists_ = false;
};

bool CFileReplacement::CFileBeside::Create() {
  // Never more open than the old file, not even while it is empty.
  const mode_t mode = hasOld_ ? old_.st_mode & kNewFile : kNewFile;
  for (int i = 0; i < kMostNames; ++i) {
    name_ = target_;
    name_ += ".new" + std::to_string(::getpid()) + "-" + std::to_string(i);
    descriptor_ = calls_.Open(name_, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    exists_ = descriptor_ >= 0;
    if (exists_ || errno != EEXIST) {
      return exists_;
    }
  }
  return false;
}

bool CFileReplacement::CFileBeside::TakeOverOwner() {
  if (!hasOld_) {
    return true;
  }
  // Giving files away is for the system's administrator, for others nothing is lost.
  if (old_.st_uid != ::geteuid() || old_.st_gid != ::getegid()) {
    static_cast<void>(calls_.ChangeOwner(descriptor_, old_.st_uid, old_.st_gid));
  }
  return calls_.ChangeMode(descriptor_, old_.st_mode & kAllPermissions) == 0;
}

bool CFileReplacement::CFileBeside::Fill(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = calls_.Write(descriptor_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written == 0) {
      errno = EIO;
    }
    if (written <= 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool CFileReplacement::CFileBeside::Close() {
  if (descriptor_ < 0) {
    return true;
  }
  const int descriptor = descriptor_;
  descriptor_ = -1;
  return calls_.Close(descriptor) == 0;
}

bool CFileReplacement::CFileBeside::TakePlace() {
  exists_ = calls_.Rename(name_, target_) != 0;
  return !exists_;
}

CFileReplacement::CFileReplacement(fs::path file, CFileCalls& calls)
    : target_(std::move(file)), calls_(calls) {}

CFileReplacement::~CFileReplacement() = default;

std::error_code CFileReplacement::Begin() {
  if (const std::error_code error = FollowLinks(target_)) {
    return error;
  }
  if (!target_.has_filename()) {
    return std::make_error_code(target_.empty() ? std::errc::no_such_file_or_directory
                                                : std::errc::is_a_directory);
  }
  struct stat old = {};
  const bool exists = calls_.Stat(target_, old) == 0;
  if (!exists && errno != ENOENT) {
    return LastError();
  }
  if (exists && S_ISDIR(old.st_mode)) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  if (exists && !S_ISREG(old.st_mode)) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  if (exists && calls_.Access(target_, W_OK) != 0) {
    return LastError();
  }
  beside_ = std::make_unique<CFileBeside>(target_, exists ? &old : nullptr, calls_);
  return beside_->Create() && beside_->TakeOverOwner() ? std::error_code() : LastError();
}

std::error_code CFileReplacement::Write(std::string_view bytes) {
  return beside_->Fill(bytes) ? std::error_code() : LastError();
}

std::error_code CFileReplacement::Commit() {
  if (!beside_->Flush() || !beside_->Close() || !beside_->TakePlace()) {
    return LastError();
  }
  FlushFolder(FolderOf(target_), calls_);
  return {};
}

std::error_code TryReplaceFile(const fs::path& file, std::string_view bytes, CFileCalls& calls) {
  CFileReplacement replacement(file, calls);
  if (const std::error_code error = replacement.Begin()) {
    return error;
  }
  if (const std::error_code error = replacement.Write(bytes)) {
    return error;
  }
  return replacement.Commit();
}

bool ReplaceFile(const fs::path& file, std::string_view bytes) {
  fs::path target = file;
  if (FollowLinks(target)) {
    return false;
  }
  std::error_code ignored;  // what stands in the way shows when the file is opened
  fs::create_directories(FolderOf(target), ignored);
  CFileCalls calls;
  return !TryReplaceFile(target, bytes, calls);
}

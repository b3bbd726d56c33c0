// Replacing a file as one step.
#ifndef TALLY_PLATFORM_PORTABLE_FILE_REPLACEMENT_H_
#define TALLY_PLATFORM_PORTABLE_FILE_REPLACEMENT_H_

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

class CFileCalls;

/// Gives a file new content: written beside it, flushed to the disk and renamed, so that a crash
/// leaves the old or the new content. Follows symbolic links, and keeps the permissions of a file
/// that is there, and its owner where that is allowed. Each step answers why it failed; the old
/// file is then untouched, and nothing is left beside it after the destructor. What is no regular
/// file, or may not be written, is refused.
class CFileReplacement {
 public:
  /// `calls` must outlive the replacement.
  CFileReplacement(std::filesystem::path file, CFileCalls& calls);
  ~CFileReplacement();
  CFileReplacement(const CFileReplacement&) = delete;
  CFileReplacement& operator=(const CFileReplacement&) = delete;

  /// Once, before the others.
  std::error_code Begin();
  std::error_code Write(std::string_view bytes);
  /// Puts what was written in the file's place. The folder's own flush is an attempt: the new
  /// content is in place by then, and some file systems know no such flush.
  std::error_code Commit();

 private:
  class CFileBeside;

  std::filesystem::path target_;
  CFileCalls& calls_;
  std::unique_ptr<CFileBeside> beside_;
};

/// Gives the file `bytes` as its content by a CFileReplacement.
std::error_code TryReplaceFile(const std::filesystem::path& file, std::string_view bytes,
                               CFileCalls& calls);

/// The same through the system itself, after making missing folders. False where it failed.
bool ReplaceFile(const std::filesystem::path& file, std::string_view bytes);

#endif  // TALLY_PLATFORM_PORTABLE_FILE_REPLACEMENT_H_

// Replacing a file as one step.
#ifndef TALLY_PLATFORM_PORTABLE_FILE_REPLACEMENT_H_
#define TALLY_PLATFORM_PORTABLE_FILE_REPLACEMENT_H_

#include <filesystem>
#include <string_view>
#include <system_error>

class CFileCalls;

/// Gives the file `bytes` as its content: written beside it, flushed to the disk and renamed, so
/// that a crash leaves the old or the new content. Follows symbolic links, and keeps the
/// permissions of a file that is there, and its owner where that is allowed. Answers why it failed;
/// the old file is then untouched and nothing is left beside it. What is no regular file, or may
/// not be written, is refused. The folder's own flush is an attempt: the new content is in place by
/// then, and some file systems know no such flush.
std::error_code TryReplaceFile(const std::filesystem::path& file, std::string_view bytes,
                               CFileCalls& calls);

/// The same through the system itself, after making missing folders. False where it failed.
bool ReplaceFile(const std::filesystem::path& file, std::string_view bytes);

#endif  // TALLY_PLATFORM_PORTABLE_FILE_REPLACEMENT_H_

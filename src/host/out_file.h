// The file that a command's output goes to.
#ifndef TALLY_HOST_OUT_FILE_H_
#define TALLY_HOST_OUT_FILE_H_

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/output.h"
#include "platform/portable/file_calls.h"
#include "platform/portable/file_replacement.h"

/// A path of the file system for a name in UTF-8, and back.
std::filesystem::path PathFromUtf8(const std::string& utf8);
std::string Utf8FromPath(const std::filesystem::path& path);

/// Takes the place of a file only when all of it is written; a pipe or a device is written to as it
/// is.
class COutFile {
 public:
  /// `name` and `inputs` are UTF-8; the files that the command reads are refused. Throws CHostError
  /// for what cannot be written to; messages call the file by its name.
  COutFile(const std::string& name, const std::vector<std::string>& inputs);
  COutFile(const COutFile&) = delete;
  COutFile& operator=(const COutFile&) = delete;

  COutput& Output() { return output_; }
  /// Puts what was written in place. Throws CHostError.
  void Commit();

 private:
  void Write(std::string_view bytes);

  const std::string name_;
  CFileCalls calls_;
  CFileReplacement replacement_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> device_;
  COutput output_;
};

#endif  // TALLY_HOST_OUT_FILE_H_

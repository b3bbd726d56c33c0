// A file for the time of a command.
#ifndef TALLY_HOST_TEMP_FILE_H_
#define TALLY_HOST_TEMP_FILE_H_

#include <filesystem>

/// Made empty by the constructor under a name that was free, for the user alone, in the system's
/// folder for temporary files, which is TMPDIR where that is set; removed by the destructor.
class CTempFile {
 public:
  /// Throws CHostError where there can be none.
  CTempFile();
  ~CTempFile();
  CTempFile(const CTempFile&) = delete;
  CTempFile& operator=(const CTempFile&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

#endif  // TALLY_HOST_TEMP_FILE_H_

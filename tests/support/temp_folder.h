// A folder of its own for each test.
#ifndef TALLY_TESTS_SUPPORT_TEMP_FOLDER_H_
#define TALLY_TESTS_SUPPORT_TEMP_FOLDER_H_

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

namespace tally_test {

/// Made empty by the constructor, removed with all it holds by the destructor.
class CTempFolder {
 public:
  CTempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tally_test_").string() +
                       std::string(6, 'X');  // mkdtemp's to fill in
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    path_ = name;
  }
  ~CTempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  CTempFolder(const CTempFolder&) = delete;
  CTempFolder& operator=(const CTempFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

/// The bytes of a file; empty where it cannot be read.
inline std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

inline void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.flush();
  if (!file) {
    throw std::runtime_error("cannot write " + path.string());
  }
}

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_TEMP_FOLDER_H_

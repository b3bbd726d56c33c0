#include "host/out_file.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "host/host_error.h"
#include "host/joined.h"

namespace {

namespace fs = std::filesystem;

void CheckName(const std::string& name, const std::vector<std::string>& inputs) {
  std::error_code ignored;
  const fs::path path = PathFromUtf8(name);
  if (fs::is_directory(path, ignored)) {
    throw CHostError(Joined("--output: '", name, "' is a folder"));
  }
  const fs::path folder = path.parent_path();
  if (!folder.empty() && !fs::is_directory(folder, ignored)) {
    throw CHostError(Joined("--output: the folder of '", name, "' does not exist"));
  }
  for (const std::string& input : inputs) {
    if (fs::equivalent(path, PathFromUtf8(input), ignored)) {
      throw CHostError(Joined("--output: '", name, "' is what the report is made of"));
    }
  }
}

void Require(const std::string& name, const std::error_code& error) {
  if (error) {
    throw CHostError(Joined("cannot write to '", name, "': ", error.message()));
  }
}

}  // namespace

fs::path PathFromUtf8(const std::string& utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Utf8FromPath(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return std::string(utf8.begin(), utf8.end());
}

COutFile::COutFile(const std::string& name, const std::vector<std::string>& inputs)
    : name_(name),
      replacement_(PathFromUtf8(name), calls_),
      device_(nullptr, std::fclose),
      output_([this](std::string_view bytes) { Write(bytes); }) {
  CheckName(name, inputs);
  std::error_code ignored;
  if (!fs::is_other(PathFromUtf8(name), ignored)) {
    Require(name_, replacement_.Begin());
    return;
  }
  device_.reset(std::fopen(name.c_str(), "wb"));
  if (device_ == nullptr) {
    Require(name_, {errno, std::generic_category()});
  }
}

void COutFile::Write(std::string_view bytes) {
  if (device_ == nullptr) {
    Require(name_, replacement_.Write(bytes));
  } else if (std::fwrite(bytes.data(), 1, bytes.size(), device_.get()) != bytes.size() ||
             std::fflush(device_.get()) != 0) {
    Require(name_, {errno, std::generic_category()});
  }
}

void COutFile::Commit() {
  output_.Flush();
  if (device_ == nullptr) {
    Require(name_, replacement_.Commit());
  }
}

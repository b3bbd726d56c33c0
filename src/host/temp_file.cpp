#include "host/temp_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include "host/host_error.h"
#include "host/joined.h"

CTempFile::CTempFile() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  if (error) {
    throw CHostError(Joined("no folder for temporary files, see TMPDIR: ", error.message()));
  }
  std::string name = (folder / "tally-").string() + std::string(6, 'X');  // mkstemp's to fill in
  const int descriptor = mkstemp(name.data());
  if (descriptor < 0) {
    throw CHostError(Joined("cannot make a temporary file in '", folder.string(),
                            "': ", std::generic_category().message(errno)));
  }
  close(descriptor);
  path_ = name;
}

CTempFile::~CTempFile() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

// Programs that some tests need and that this project does not build.
#ifndef TALLY_TESTS_SUPPORT_OUTSIDE_PROGRAM_H_
#define TALLY_TESTS_SUPPORT_OUTSIDE_PROGRAM_H_

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "support/process.h"

namespace tally_test {

/// Whether a test may use what is missing as an excuse. Where TALLY_REQUIRE_PROGRAMS is 1 it may
/// not: the test fails.
inline bool ReportMissing(const std::string& what) {
  const char* required = getenv("TALLY_REQUIRE_PROGRAMS");
  if (required != nullptr && std::string_view(required) == "1") {
    ADD_FAILURE() << what << " is missing";
  }
  return false;
}

/// True where the program at `path` can be run. Otherwise the test is to end with GTEST_SKIP; it
/// has failed before where programs are required.
inline bool RequireProgram(const std::string& path) {
  return access(path.c_str(), X_OK) == 0 || ReportMissing(path);
}

/// The same for a module of Debian's Python.
inline bool RequirePythonModule(const std::string& name) {
  return (RequireProgram("/usr/bin/python3") &&
          RunProcess({"/usr/bin/python3", "-c", "import " + name}).exitStatus == 0) ||
         ReportMissing("Python module " + name);
}

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_OUTSIDE_PROGRAM_H_

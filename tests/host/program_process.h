// The program with a small project, run as a user runs it.
#ifndef TALLY_TESTS_HOST_PROGRAM_PROCESS_H_
#define TALLY_TESTS_HOST_PROGRAM_PROCESS_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/small_project.h"
#include "support/process.h"
#include "support/project_database.h"
#include "support/temp_folder.h"

namespace tally_test {

class ProgramProcess : public testing::Test {
 protected:
  using Words = CProcess::Words;

  ProgramProcess() { CreateProjectDatabase(Project(), kSmallProject); }

  std::string Project() const { return Name("small.tally"); }
  std::string Name(const char* name) const { return (folder_ / name).string(); }

  /// `words` follow the program's name.
  static SProcessResult Run(Words words, const Words& environment = {}) {
    words.insert(words.begin(), TALLY_PROGRAM);
    return RunProcess(words, "", environment);
  }

  static void ExpectOutput(const Words& words, const std::string& output,
                           const Words& environment = {}) {
    const SProcessResult result = Run(words, environment);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 0);
  }

  static void ExpectFault(const Words& words, const std::string& message,
                          const Words& environment = {}) {
    const SProcessResult result = Run(words, environment);
    EXPECT_EQ(result.errors, "tally: " + message + "\n");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.exitStatus, 2);
  }

  CTempFolder folder_;
};

}  // namespace tally_test

#endif  // TALLY_TESTS_HOST_PROGRAM_PROCESS_H_

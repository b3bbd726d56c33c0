// The program `tally`: reads the command line, calls, and maps what comes back to the exit status.
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <variant>
#include <vector>

#include "host/arguments.h"
#include "host/batch.h"
#include "host/check_command.h"
#include "host/config_command.h"
#include "host/demo_project.h"
#include "host/open_project.h"
#include "host/output.h"
#include "host/report_command.h"
#include "host/reports_command.h"
#include "host/status_command.h"
#include "host/terminal_text.h"
#include "host/tree_command.h"
#include "platform/portable/utf8_text.h"

namespace {

constexpr int kExitFine = 0;
constexpr int kExitError = 2;  // also of a check that has findings

int Run(const SDemoArguments& arguments, COutput&) {
  WriteDemoProject(arguments.file, arguments.rows);
  return kExitFine;
}

int Run(const SReportArguments& arguments, COutput& output) {
  RunReport(arguments, output);
  return kExitFine;
}

int Run(const SReportsArguments& arguments, COutput& output) {
  RunReports(arguments, output);
  return kExitFine;
}

int Run(const STreeArguments& arguments, COutput& output) {
  RunTree(arguments, output);
  return kExitFine;
}

int Run(const SCheckArguments& arguments, COutput& output) {
  return RunCheck(arguments, output) ? kExitFine : kExitError;
}

int Run(const SBatchArguments& arguments, COutput& output) {
  COpenProject project(arguments.file);
  CBatch(project, output).Run(std::cin);
  return kExitFine;
}

int Run(const SStatusArguments& arguments, COutput& output) {
  RunStatus(arguments, output);
  return kExitFine;
}

int Run(const SConfigArguments& arguments, COutput& output) {
  RunConfig(arguments, output);
  return kExitFine;
}

int Run(const SHelpText& help, COutput& output) {
  output.Write(help.text);
  output.Flush();
  return kExitFine;
}

int Fail(const std::string& message) {
  const std::string line = "tally: " + ToTerminalText(WideFromUtf8(message)).bytes + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
  return kExitError;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    // A closed pipe is an error of the write, not the end of the program.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);
    COutput output(stdout, "standard output");
    const Arguments arguments = ReadArguments(std::vector<std::string>(argv + 1, argv + argc));
    return std::visit([&output](const auto& command) { return Run(command, output); }, arguments);
  } catch (const std::bad_alloc&) {
    return Fail("out of memory");
  } catch (const std::exception& error) {
    return Fail(error.what());
  }
}

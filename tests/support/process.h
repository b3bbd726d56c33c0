// Runs programs as a user would: with arguments, an input, and nothing of the test's environment.
#ifndef TALLY_TESTS_SUPPORT_PROCESS_H_
#define TALLY_TESTS_SUPPORT_PROCESS_H_

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/temp_folder.h"

namespace tally_test {

/// What a program left behind.
struct SProcessResult {
  int exitStatus = -1;  ///< -1 where a signal ended it
  std::string output;
  std::string errors;
};

/// A running program, ended by its destructor at the latest. Its home is an empty folder.
class CProcess {
 public:
  using Words = std::vector<std::string>;

  /// `words` begin with the program's path; `environment` holds further "NAME=value" texts.
  /// `outputFile` takes standard output instead of the pipe that ReadLine reads.
  explicit CProcess(const Words& words, const Words& environment = {},
                    const std::filesystem::path& outputFile = {}) {
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) {
      throw std::runtime_error("no pipe");
    }
    signal(SIGPIPE, SIG_IGN);  // a program may end before it has read its input
    child_ = fork();
    if (child_ < 0) {
      throw std::runtime_error("no process");
    }
    if (child_ == 0) {
      Execute(words, environment, input[0],
              outputFile.empty() ? output[1] : open(outputFile.c_str(), O_WRONLY | O_CREAT, 0666));
    }
    close(input[0]);
    close(output[1]);
    input_ = input[1];
    output_ = output[0];
  }

  ~CProcess() {
    CloseInput();
    CloseOutput();
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
    }
  }
  CProcess(const CProcess&) = delete;
  CProcess& operator=(const CProcess&) = delete;

  /// Gives `text` to the program; what it does not read is lost.
  void Write(const std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
      const ssize_t written = write(input_, text.data() + at, text.size() - at);
      if (written <= 0) {
        return;
      }
      at += static_cast<std::size_t>(written);
    }
  }
  void CloseInput() { Close(input_); }
  void CloseOutput() { Close(output_); }

  /// The next line of the output without its end; waits for it.
  std::string ReadLine() {
    std::size_t end = pending_.find('\n');
    while (end == std::string::npos && ReadMore()) {
      end = pending_.find('\n');
    }
    std::string line = pending_.substr(0, end);
    pending_.erase(0, end == std::string::npos ? end : end + 1);
    return line;
  }

  /// Reads the output to its end and waits for the program's.
  SProcessResult Wait() {
    CloseInput();
    while (output_ >= 0 && ReadMore()) {
    }
    int status = 0;
    waitpid(child_, &status, 0);
    child_ = -1;
    SProcessResult result;
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.output = std::exchange(pending_, {});
    result.errors = ReadBytes(folder_ / "errors");
    return result;
  }

 private:
  [[noreturn]] void Execute(const Words& words, const Words& environment, int input, int output) {
    const int errors = open((folder_ / "errors").c_str(), O_WRONLY | O_CREAT, 0600);
    Words variables = {"PATH=/usr/bin:/bin", "HOME=" + folder_.Path().string()};
    variables.insert(variables.end(), environment.begin(), environment.end());
    const auto pointers = [](const Words& texts) {
      std::vector<char*> list;
      for (const std::string& text : texts) {
        list.push_back(const_cast<char*>(text.c_str()));
      }
      list.push_back(nullptr);
      return list;
    };
    signal(SIGPIPE, SIG_DFL);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    execve(words[0].c_str(), pointers(words).data(), pointers(variables).data());
    _exit(127);
  }

  bool ReadMore() {
    char bytes[1 << 16];
    const ssize_t count = read(output_, bytes, sizeof bytes);
    if (count > 0) {
      pending_.append(bytes, static_cast<std::size_t>(count));
    }
    return count > 0;
  }

  static void Close(int& descriptor) {
    if (descriptor >= 0) {
      close(std::exchange(descriptor, -1));
    }
  }

  CTempFolder folder_;
  pid_t child_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string pending_;
};

/// Runs a program to its end. The input must be small enough to be read before the output fills a
/// pipe, or the program must read it all first.
inline SProcessResult RunProcess(const CProcess::Words& words, const std::string& input = "",
                                 const CProcess::Words& environment = {}) {
  CProcess process(words, environment);
  process.Write(input);
  return process.Wait();
}

}  // namespace tally_test

#endif  // TALLY_TESTS_SUPPORT_PROCESS_H_

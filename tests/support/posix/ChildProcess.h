// A program that runs beside the test until the end of its standard input.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <vector>

namespace pellorin::test {

class ChildProcess {
 public:
  // The program's full path and its arguments.
  explicit ChildProcess(std::vector<std::string> words) {
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0)
      throw std::runtime_error("no pipe");
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], 0);
    posix_spawn_file_actions_adddup2(&actions, output[1], 1);
    const int problem = ::posix_spawn(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(input[0]);
    ::close(output[1]);
    lifeline_ = input[1];
    for (char letter = 0; ::read(output[0], &letter, 1) == 1 && letter != '\n';) firstLine_ += letter;
    ::close(output[0]);
    if (problem != 0) {
      ::close(lifeline_);
      throw std::runtime_error("cannot start " + words.front());
    }
  }
  // Ends the program's input and waits for the program.
  ~ChildProcess() {
    ::close(lifeline_);
    while (::waitpid(process_, nullptr, 0) == -1 && errno == EINTR) {
    }
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  const std::string& FirstLine() const { return firstLine_; }  // of the program's output

 private:
  pid_t process_ = 0;
  int lifeline_ = -1;
  std::string firstLine_;
};

}  // namespace pellorin::test

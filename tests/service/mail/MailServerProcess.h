// A mail server that runs as long as the object lives (see mail_server.py), on a free port of its own.
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

#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {

class MailServerProcess {
 public:
  explicit MailServerProcess(const std::string& mode, const std::vector<std::string>& options = {}) {
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0)
      throw std::runtime_error("no pipe");
    // The system's own Python is the one that its packages are for.
    std::vector<std::string> words{"/usr/bin/python3", std::string(TEST_DATA) + "/mail/mail_server.py", mode,
                                   folder_.Path()};
    words.insert(words.end(), options.begin(), options.end());
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
    ReadPort(output[0]);
    ::close(output[0]);
    if (problem != 0 || port_ == 0) throw std::runtime_error("the mail server did not start");
  }
  ~MailServerProcess() {
    ::close(lifeline_);  // the end of its input is the end of the server
    while (::waitpid(process_, nullptr, 0) == -1 && errno == EINTR) {
    }
  }
  MailServerProcess(const MailServerProcess&) = delete;
  MailServerProcess& operator=(const MailServerProcess&) = delete;

  int Port() const { return port_; }
  // Empty when it has not been written.
  std::string Received(const std::string& name) const { return folder_.Has(name) ? folder_.Read(name) : ""; }

 private:
  void ReadPort(int output) {
    for (char digit = 0; ::read(output, &digit, 1) == 1 && digit != '\n';) port_ = port_ * 10 + (digit - '0');
  }

  TemporaryFolder folder_;
  pid_t process_ = 0;
  int lifeline_ = -1;
  int port_ = 0;
};

}  // namespace pellorin::test

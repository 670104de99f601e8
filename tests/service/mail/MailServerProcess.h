// A mail server that runs as long as the object lives (see mail_server.py), on a free port of its own.
#pragma once

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/posix/ChildProcess.h"

namespace pellorin::test {

class MailServerProcess {
 public:
  explicit MailServerProcess(const std::string& mode, const std::vector<std::string>& options = {})
      : process_(CommandLine(mode, options)), port_(std::atoi(process_.FirstLine().c_str())) {
    if (port_ == 0) throw std::runtime_error("the mail server did not start");
  }

  int Port() const { return port_; }
  // Empty when it has not been written.
  std::string Received(const std::string& name) const { return folder_.Has(name) ? folder_.Read(name) : ""; }

 private:
  std::vector<std::string> CommandLine(const std::string& mode,
                                       const std::vector<std::string>& options) const {
    // The system's own Python is the one that its packages are for.
    std::vector<std::string> words{"/usr/bin/python3", std::string(TEST_DATA) + "/mail/mail_server.py", mode,
                                   folder_.Path()};
    words.insert(words.end(), options.begin(), options.end());
    return words;
  }

  TemporaryFolder folder_;
  ChildProcess process_;
  int port_;
};

}  // namespace pellorin::test

// A database server that runs as long as the object lives, for tests of the real driver: tds_server.py says
// what it understands. Tests see what reached it, and make things go wrong at any step.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/Text.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/posix/ChildProcess.h"

namespace pellorin::test {

// What happens at one step of the conversation instead of, or besides, the usual answer.
struct Hook {
  static Hook Silent() { return {"silent"}; }  // from now on, for the connection
  static Hook Drop() { return {"drop"}; }
  static Hook Bytes(const std::string& bytes) { return {"bytes", bytes}; }  // as they are
  // Instead of doing what is asked.
  static Hook Error(int number, const std::string& text) {
    return {"error", std::to_string(number) + " " + text};
  }
  // Severe errors end the transaction as well.
  static Hook ErrorAndRollBack(int number, const std::string& text) {
    return {"error-and-rollback", std::to_string(number) + " " + text};
  }
  // Does what a batch asks; the error follows the result.
  static Hook ErrorAfterResult(int number, const std::string& text) {
    return {"late-error", std::to_string(number) + " " + text};
  }

  std::string kind;
  std::string text = {};
};

// Steps until a connection is open: the program's question, the driver's PRELOGIN, LOGIN7.
inline constexpr int kOpening = 3;

class TdsServer {
 public:
  TdsServer() {
    std::istringstream ports(process_.FirstLine());
    if (!(ports >> port_ >> browserPort_)) throw std::runtime_error("the database server did not start");
  }

  int Port() const { return port_; }
  int BrowserPort() const { return browserPort_; }  // where it tells the port of its instance SALES

  void AddLogin(const std::string& user, const std::string& password) {
    logins_ += user + '\0' + password + '\0';
    folder_.Write("logins", logins_);
  }

  // Steps are counted over all connections: each PRELOGIN, LOGIN7, batch, call and transaction request is
  // one.
  int Steps() const { return std::stoi(folder_.Read("steps")); }
  void AtStep(int step, const Hook& hook) const {
    folder_.Write("hook-" + std::to_string(step), hook.kind + " " + hook.text);
  }
  bool HasOpenTransaction() const { return folder_.Read("transactions") != "0"; }

  // What was received and not met by a hook's silence, end or error, in order.
  std::vector<std::string> Batches() const { return Received("batch"); }
  std::vector<std::string> Users() const { return Received("login"); }
  std::vector<std::string> BrowserQuestions() const { return Received("question"); }
  // A call's statement with @P1, @P2, … for its values, then these.
  std::vector<std::string> LastCall() const {
    const std::vector<std::string> calls = Received("call");
    return calls.empty() ? calls : SplitAt(std::string_view("\0", 1), calls.back());
  }

 private:
  std::vector<std::string> Received(const std::string& kind) const {
    std::vector<std::string> received;
    for (int number = 0; folder_.Has(kind + "-" + std::to_string(number)); ++number)
      received.push_back(folder_.Read(kind + "-" + std::to_string(number)));
    return received;
  }

  TemporaryFolder folder_;
  // The system's own Python is the one that its packages are for.
  ChildProcess process_{{"/usr/bin/python3", PROJECT_FOLDER "/tests/sql/tds_server.py", folder_.Path()}};
  int port_ = 0, browserPort_ = 0;
  std::string logins_;
};

}  // namespace pellorin::test

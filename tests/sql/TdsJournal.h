// What reached the test server, and what it shall do at which step. Safe to use from any thread.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "tests/sql/TdsMessages.h"

namespace pellorin::tds {

// What happens at one step of the conversation instead of, or besides, the usual answer.
struct Hook {
  enum class Kind { kNone, kSilent, kDrop, kBytes, kError, kErrorAfterResult };
  enum class Transaction { kKept, kRolledBack };

  static Hook Silent() { return {Kind::kSilent}; }  // from now on, for the connection
  static Hook Drop() { return {Kind::kDrop}; }
  static Hook Bytes(std::string bytes) { return {Kind::kBytes, 0, std::move(bytes)}; }  // as they are
  // Instead of doing what is asked; severe errors end the transaction as well.
  static Hook Error(int number, std::string text, Transaction transaction = Transaction::kKept) {
    return {Kind::kError, number, std::move(text), transaction};
  }
  // Does what a batch asks; the error follows the result.
  static Hook ErrorAfterResult(int number, std::string text) {
    return {Kind::kErrorAfterResult, number, std::move(text)};
  }

  Kind kind = Kind::kNone;
  int number = 0;
  std::string text = {};
  Transaction transaction = Transaction::kKept;
};

// Steps until a connection is open: the program's question, the driver's PRELOGIN, LOGIN7.
inline constexpr int kOpening = 3;

class TdsJournal {
 public:
  void AddLogin(const std::string& user, const std::string& password) {
    const std::lock_guard lock(mutex_);
    passwords_[user] = password;
  }
  bool Accepts(const Login& login) const {
    const std::lock_guard lock(mutex_);
    const auto found = passwords_.find(login.user);
    return found != passwords_.end() && found->second == login.password;
  }

  // Steps are counted over all connections: each PRELOGIN, LOGIN7, batch, call and
  // transaction request is one.
  void AtStep(int step, const Hook& hook) {
    const std::lock_guard lock(mutex_);
    hooks_[step] = hook;
  }
  Hook NextStep() {
    const std::lock_guard lock(mutex_);
    return hooks_[++steps_];
  }
  int Steps() const { return Copy(steps_); }  // so far

  // What was received and not met by a hook's silence, end or error, in order.
  std::vector<std::string> Batches() const { return Copy(batches_); }
  std::vector<Call> Calls() const { return Copy(calls_); }
  std::vector<Login> Logins() const { return Copy(logins_); }
  std::string Recorded(const std::string& batch) { return Append(batches_, batch); }
  Call Recorded(const Call& call) { return Append(calls_, call); }
  Login Recorded(const Login& login) { return Append(logins_, login); }

 private:
  template <typename Value>
  Value Copy(const Value& value) const {
    const std::lock_guard lock(mutex_);
    return value;
  }
  template <typename Value>
  Value Append(std::vector<Value>& values, const Value& value) {
    const std::lock_guard lock(mutex_);
    values.push_back(value);
    return value;
  }

  mutable std::mutex mutex_;  // guards all below
  std::map<std::string, std::string> passwords_;
  std::map<int, Hook> hooks_;
  int steps_ = 0;
  std::vector<std::string> batches_;
  std::vector<Call> calls_;
  std::vector<Login> logins_;
};

}  // namespace pellorin::tds

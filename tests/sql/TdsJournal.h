// What reached the test server, and what it shall do at which step. Safe to use from any thread.
#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "tests/sql/TdsRequests.h"

namespace pellorin::tds {

// What happens at one step of the conversation instead of, or besides, the usual answer.
struct Hook {
  enum class Kind { kNone, kSilent, kDrop, kDelay, kError, kErrorAfterResult };
  enum class Transaction { kKept, kRolledBack };

  static Hook Silent() {
    return {Kind::kSilent};
  }  // no answer to this and all later messages of the connection
  static Hook Drop() { return {Kind::kDrop}; }
  static Hook Delay(std::chrono::milliseconds time) { return {Kind::kDelay, time}; }
  // Instead of doing what is asked; severe errors end the transaction as well.
  static Hook Error(int number, std::string text, Transaction transaction = Transaction::kKept) {
    return {Kind::kError, {}, number, std::move(text), transaction};
  }
  // Does what is asked and answers so, with the error behind the result (a count where there would be none).
  static Hook ErrorAfterResult(int number, std::string text) {
    return {Kind::kErrorAfterResult, {}, number, std::move(text)};
  }

  Kind kind = Kind::kNone;
  std::chrono::milliseconds time{};
  int number = 0;
  std::string text = {};
  Transaction transaction = Transaction::kKept;
};

class TdsJournal {
 public:
  void AddLogin(const std::string& user, const std::string& password) {
    const std::lock_guard lock(mutex_);
    passwords_[user] = password;
  }
  bool Accepts(const std::string& user, const std::string& password) const {
    const std::lock_guard lock(mutex_);
    const auto found = passwords_.find(user);
    return found != passwords_.end() && found->second == password;
  }

  void AtStep(int step, Hook hook) {
    const std::lock_guard lock(mutex_);
    hooks_[step] = std::move(hook);
  }
  Hook NextStep() {
    const std::lock_guard lock(mutex_);
    const auto found = hooks_.find(++steps_);
    return found == hooks_.end() ? Hook{} : found->second;
  }
  int Steps() const { return Copy(steps_); }

  void Record(std::string batch) { Append(batches_, std::move(batch)); }
  void Record(Call call) { Append(calls_, std::move(call)); }
  void Record(Login login) { Append(logins_, std::move(login)); }
  std::vector<std::string> Batches() const { return Copy(batches_); }
  std::vector<Call> Calls() const { return Copy(calls_); }
  std::vector<Login> Logins() const { return Copy(logins_); }

 private:
  template <typename Value>
  Value Copy(const Value& value) const {
    const std::lock_guard lock(mutex_);
    return value;
  }
  template <typename Value>
  void Append(std::vector<Value>& values, Value value) {
    const std::lock_guard lock(mutex_);
    values.push_back(std::move(value));
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

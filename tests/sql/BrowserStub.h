// Answers the question "on which port does the instance listen?" that clients ask by UDP.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/sql/LoopbackSocket.h"

namespace pellorin::tds {

class BrowserStub {
 public:
  // Knows one instance, in any letter case; does not answer questions for others.
  BrowserStub(std::string instance, std::uint16_t instancePort);
  ~BrowserStub();
  BrowserStub(const BrowserStub&) = delete;
  BrowserStub& operator=(const BrowserStub&) = delete;

  std::uint16_t Port() const { return socket_.Port(); }  // of 127.0.0.1
  std::vector<std::string> Questions() const;            // the bytes received

 private:
  void Serve();
  std::string Answer(const std::string& question) const;

  const std::string instance_;
  const std::uint16_t instancePort_;
  LoopbackSocket socket_;
  mutable std::mutex mutex_;  // guards the two below
  bool isStopping_ = false;
  std::vector<std::string> questions_;
  std::thread thread_;
};

}  // namespace pellorin::tds

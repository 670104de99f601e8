// A database server in this process for tests of the real driver: see TdsDatabase for what it understands,
// TdsJournal for what can be made to go wrong. Speaks the protocol without encryption.
#pragma once

#include <cstdint>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/sql/LoopbackSocket.h"
#include "tests/sql/TdsDatabase.h"
#include "tests/sql/TdsJournal.h"

namespace pellorin::tds {

class TdsServer {
 public:
  TdsServer();   // listens on 127.0.0.1
  ~TdsServer();  // closes all connections, whatever their clients wait for
  TdsServer(const TdsServer&) = delete;
  TdsServer& operator=(const TdsServer&) = delete;

  std::uint16_t Port() const { return listener_.Port(); }

  void AddLogin(const std::string& user, const std::string& password) { journal_.AddLogin(user, password); }

  // Steps are counted over all connections: each PRELOGIN, LOGIN7, batch, call and transaction request is
  // one.
  void AtStep(int step, const Hook& hook) { journal_.AtStep(step, hook); }
  int Steps() const { return journal_.Steps(); }  // so far

  // What was received, in order.
  std::vector<std::string> Batches() const { return journal_.Batches(); }
  std::vector<Call> Calls() const { return journal_.Calls(); }
  std::vector<Login> Logins() const { return journal_.Logins(); }

 private:
  struct Client {
    LoopbackSocket socket;
    std::thread thread;
  };

  void Accept();
  void Serve(Client& client);

  TdsDatabase database_;
  TdsJournal journal_;
  LoopbackSocket listener_;
  std::mutex mutex_;  // guards the clients' sockets and the flag
  bool isStopping_ = false;
  std::list<Client> clients_;
  std::thread acceptor_;
};

}  // namespace pellorin::tds

// A database server in this process for tests of the real driver: see TdsDatabase for what it understands,
// TdsJournal for what can be made to go wrong. Speaks the protocol without encryption.
#pragma once

#include <cstdint>
#include <list>
#include <mutex>
#include <thread>

#include "tests/sql/TdsDatabase.h"
#include "tests/sql/TdsJournal.h"
#include "tests/support/posix/LoopbackSocket.h"

namespace pellorin::tds {

class TdsServer : public TdsJournal {
 public:
  TdsServer();   // listens on 127.0.0.1
  ~TdsServer();  // closes all connections, whatever their clients wait for
  TdsServer(const TdsServer&) = delete;
  TdsServer& operator=(const TdsServer&) = delete;

  std::uint16_t Port() const { return listener_.Port(); }
  bool HasOpenTransaction() { return database_.HasOpenTransaction(); }

 private:
  struct Client {
    explicit Client(LoopbackSocket accepted) : socket(std::move(accepted)) {}
    LoopbackSocket socket;
    std::thread thread = {};
  };

  void Accept();

  TdsDatabase database_;
  LoopbackSocket listener_;
  std::mutex mutex_;  // guards the clients' sockets and the flag
  bool isStopping_ = false;
  std::list<Client> clients_;
  std::thread acceptor_;
};

}  // namespace pellorin::tds

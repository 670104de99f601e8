#include "tests/sql/TdsServer.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "tests/sql/TdsConnection.h"

namespace pellorin::tds {

TdsServer::TdsServer() : listener_(LoopbackSocket::Bound(SOCK_STREAM)) {
  acceptor_ = std::thread([this] { Accept(); });
}

TdsServer::~TdsServer() {
  {
    const std::lock_guard lock(mutex_);
    isStopping_ = true;
    listener_.Shutdown();
    for (const Client& client : clients_) client.socket.Shutdown();
  }
  acceptor_.join();
  for (Client& client : clients_) client.thread.join();
}

void TdsServer::Accept() {
  while (true) {
    LoopbackSocket socket(::accept4(listener_.Descriptor(), nullptr, nullptr, SOCK_CLOEXEC));
    const std::lock_guard lock(mutex_);
    if (isStopping_ || socket.Descriptor() < 0) return;
    const int noDelay = 1;
    ::setsockopt(socket.Descriptor(), IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof noDelay);
    Client& client = clients_.emplace_back();
    client.socket = std::move(socket);
    client.thread = std::thread([this, &client] { Serve(client); });
  }
}

void TdsServer::Serve(Client& client) {
  TdsConnection(client.socket.Descriptor(), database_, journal_).Run();
  const std::lock_guard lock(mutex_);
  client.socket.Close();
}

}  // namespace pellorin::tds

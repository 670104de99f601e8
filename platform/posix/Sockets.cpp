#include "platform/Sockets.h"

#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

namespace pellorin {

SocketHandle OpenSocket(int family, int type, int protocol) {
  return ::socket(family, type | SOCK_CLOEXEC, protocol);
}

void ShutDownSocket(SocketHandle socket) {
  ::shutdown(static_cast<int>(socket), SHUT_RDWR);
}

bool CloseSocket(SocketHandle socket) {
  return ::close(static_cast<int>(socket)) == 0;
}

void LetBrokenConnectionsFail() {
  sigset_t brokenPipe;
  sigemptyset(&brokenPipe);
  sigaddset(&brokenPipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
}

}  // namespace pellorin

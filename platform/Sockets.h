// Socket calls made on behalf of a library that leaves them to its caller.
#pragma once

#include <cstdint>

namespace pellorin {

using SocketHandle = std::intptr_t;
inline constexpr SocketHandle kNoSocket = -1;

// The three arguments are the system's own numbers. kNoSocket when the system refuses. Programs that are
// started later do not inherit the socket.
SocketHandle OpenSocket(int family, int type, int protocol);
// Ends both directions, so that a thread that waits for the socket wakes up. Harmless without a connection.
void ShutDownSocket(SocketHandle socket);
bool CloseSocket(SocketHandle socket);

// From now on, a write of this thread to a broken connection fails instead of ending the program.
void LetBrokenConnectionsFail();

}  // namespace pellorin

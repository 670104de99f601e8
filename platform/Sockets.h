// What a program does itself to the stream sockets that a library works with.
#pragma once

#include <cstdint>

namespace pellorin {

using SocketHandle = std::intptr_t;
inline constexpr SocketHandle kNoSocket = -1;

// kNoSocket when the system has none. The three kinds are the system's own numbers; a program that is started
// meanwhile does not inherit it.
SocketHandle OpenSocket(int family, int type, int protocol);
// Ends both directions: a thread that waits for the socket wakes up. Harmless where nothing is connected.
void ShutDownSocket(SocketHandle socket);
bool CloseSocket(SocketHandle socket);

// From now on a write to a connection that was shut down fails on this thread, and ends no program.
void LetBrokenConnectionsFail();

}  // namespace pellorin

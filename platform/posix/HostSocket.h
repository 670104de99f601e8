// A socket that talks to one address of a host.
#pragma once

#include <chrono>
#include <vector>

#include "platform/HostAddresses.h"

namespace pellorin {

class HostSocket {
 public:
  // Begins to connect. No call on the socket waits.
  explicit HostSocket(const HostAddress& address);
  HostSocket(HostSocket&& other) noexcept;
  HostSocket& operator=(HostSocket&& other) noexcept;
  ~HostSocket();

  int Descriptor() const { return descriptor_; }
  int Error();  // the system's number of what went wrong first; 0 for nothing

 private:
  int descriptor_;
  int error_ = 0;
};

enum class SocketIs { Readable, Writable };  // either also when it has failed

// Waits until one of the sockets is as wanted. Returns the indexes of those, none after the patience.
std::vector<std::size_t> WaitForSockets(const std::vector<HostSocket>& sockets, SocketIs wanted,
                                        std::chrono::milliseconds patience);

}  // namespace pellorin

// A socket for one address of a host. No call on it waits.
#pragma once

#include <chrono>
#include <vector>

#include "platform/posix/HostAddresses.h"

namespace pellorin {

class HostSocket {
 public:
  // Begins to connect.
  explicit HostSocket(const HostAddress& address);
  HostSocket(HostSocket&& other) noexcept;
  HostSocket& operator=(HostSocket&& other) noexcept;
  ~HostSocket();

  int Descriptor() const { return descriptor_; }
  int Error();  // the number of the first failure; 0 if there was none

 private:
  int descriptor_;
  int error_ = 0;
};

enum class SocketIs { Readable, Writable };  // a socket that has failed is both

// Waits until a socket is as wanted. Returns the indexes of all that are; empty when the patience ends.
std::vector<std::size_t> WaitForSockets(const std::vector<HostSocket>& sockets, SocketIs wanted,
                                        std::chrono::milliseconds patience);

}  // namespace pellorin

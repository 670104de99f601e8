// A socket that closes itself, and sockets bound to a free port of the loopback address.
#pragma once

#include <cstdint>
#include <utility>

namespace pellorin::tds {

class LoopbackSocket {
 public:
  LoopbackSocket() = default;
  explicit LoopbackSocket(int descriptor) : descriptor_(descriptor) {}
  static LoopbackSocket Bound(int type);  // SOCK_STREAM (listening) or SOCK_DGRAM; throws std::system_error
  LoopbackSocket(LoopbackSocket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  LoopbackSocket& operator=(LoopbackSocket&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~LoopbackSocket() { Close(); }

  int Descriptor() const { return descriptor_; }
  std::uint16_t Port() const;
  void Shutdown() const;  // wakes a thread that reads, writes or accepts here
  void Close();

 private:
  int descriptor_ = -1;
};

}  // namespace pellorin::tds

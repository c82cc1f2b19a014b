// Sockets owned by a type, and a connected pair of them on the loopback interface: the only two-way channel
// that a Wine process can hand to a Linux program.
#pragma once

#include <winsock2.h>
#include <optional>
#include <utility>

namespace testbrowser::engine {

class UniqueSocket {
 public:
  explicit UniqueSocket(SOCKET socket = INVALID_SOCKET) : socket_(socket) {}
  UniqueSocket(UniqueSocket&& other) noexcept : socket_(std::exchange(other.socket_, INVALID_SOCKET)) {}
  UniqueSocket& operator=(UniqueSocket&& other) noexcept {
    std::swap(socket_, other.socket_);
    return *this;
  }
  UniqueSocket(const UniqueSocket&) = delete;
  UniqueSocket& operator=(const UniqueSocket&) = delete;
  ~UniqueSocket() {
    if (socket_ != INVALID_SOCKET) closesocket(socket_);
  }
  SOCKET get() const { return socket_; }
  explicit operator bool() const { return socket_ != INVALID_SOCKET; }

 private:
  SOCKET socket_;
};

struct SocketPair {
  UniqueSocket ours;
  UniqueSocket theirs;  ///< inheritable; close it here once the child has it
};

/// @return nothing when the system gives no sockets.
std::optional<SocketPair> ConnectedSocketPair();

}  // namespace testbrowser::engine

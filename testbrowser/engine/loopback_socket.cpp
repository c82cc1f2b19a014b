#include "engine/loopback_socket.h"

#include <ws2tcpip.h>

namespace testbrowser::engine {
namespace {

/// Winsock stays loaded from its first use to the end of the process.
bool StartWinsock() {
  static const bool started = [] {
    WSADATA data;
    return WSAStartup(MAKEWORD(2, 2), &data) == 0;
  }();
  return started;
}

UniqueSocket TcpSocket() { return UniqueSocket(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)); }

void SendAtOnce(const UniqueSocket& socket) {
  const BOOL on = TRUE;
  setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
}

bool SameEndpoint(const sockaddr_in& a, const sockaddr_in& b) {
  return a.sin_port == b.sin_port && a.sin_addr.s_addr == b.sin_addr.s_addr;
}

}  // namespace

std::optional<SocketPair> ConnectedSocketPair() {
  if (!StartWinsock()) return {};
  const UniqueSocket listener = TcpSocket();
  SocketPair pair{TcpSocket(), UniqueSocket()};
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int size = sizeof address;
  const auto any = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener.get(), any, size) != 0 || listen(listener.get(), 1) != 0 ||
      getsockname(listener.get(), any, &size) != 0 || connect(pair.ours.get(), any, size) != 0) {
    return {};
  }
  sockaddr_in peer{};
  sockaddr_in own{};
  int peer_size = sizeof peer;
  int own_size = sizeof own;
  pair.theirs = UniqueSocket(accept(listener.get(), reinterpret_cast<sockaddr*>(&peer), &peer_size));
  getsockname(pair.ours.get(), reinterpret_cast<sockaddr*>(&own), &own_size);
  // Any local program could have been quicker than our own connect.
  if (!pair.theirs || !SameEndpoint(peer, own)) return {};
  SendAtOnce(pair.ours);
  SendAtOnce(pair.theirs);
  SetHandleInformation(reinterpret_cast<HANDLE>(pair.ours.get()), HANDLE_FLAG_INHERIT, 0);
  SetHandleInformation(reinterpret_cast<HANDLE>(pair.theirs.get()), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  return pair;
}

}  // namespace testbrowser::engine

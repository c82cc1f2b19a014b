// DevTools messages over a socket: JSON texts, each ended by a NUL byte. A thread of its own reads and parses
// them, so that large messages (pictures, page texts) don't hold up the UI thread.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "engine/json.h"
#include "engine/loopback_socket.h"

namespace testbrowser::engine {

class Transport {
 public:
  /// @param notify called on the reading thread when a message came or the other end went away.
  Transport(UniqueSocket socket, std::function<void()> notify);
  ~Transport();
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;

  /// Sends one message. A lost connection shows in IsOpen, once all that came before has been taken.
  void Send(const std::string& message);
  /// The next message received; null when there is none now.
  JsonPtr Take();
  /// False when the other end went away and every message it sent has been taken.
  bool IsOpen() const;

 private:
  void Read();
  void Keep(JsonPtr message);

  UniqueSocket socket_;
  std::function<void()> notify_;
  mutable std::mutex mutex_;
  std::deque<JsonPtr> received_;
  bool ended_ = false;
  std::thread reader_;
};

}  // namespace testbrowser::engine

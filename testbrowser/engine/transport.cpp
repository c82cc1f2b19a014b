#include "engine/transport.h"

#include <algorithm>
#include <vector>

namespace testbrowser::engine {

Transport::Transport(UniqueSocket socket, std::function<void()> notify)
    : socket_(std::move(socket)), notify_(std::move(notify)), reader_([this] { Read(); }) {}

Transport::~Transport() {
  shutdown(socket_.get(), SD_BOTH);  // wakes the reader
  reader_.join();
}

void Transport::Send(const std::string& message) {
  const char* next = message.c_str();
  auto left = static_cast<int>(message.size() + 1);  // with the NUL
  while (left > 0) {
    const int sent = send(socket_.get(), next, left, 0);
    if (sent <= 0) return;
    next += sent;
    left -= sent;
  }
}

JsonPtr Transport::Take() {
  const std::lock_guard lock(mutex_);
  if (received_.empty()) return nullptr;
  JsonPtr message = std::move(received_.front());
  received_.pop_front();
  return message;
}

bool Transport::IsOpen() const {
  const std::lock_guard lock(mutex_);
  return !ended_ || !received_.empty();
}

void Transport::Read() {
  std::vector<char> chunk(1 << 16);
  std::string message;
  for (int size; (size = recv(socket_.get(), chunk.data(), static_cast<int>(chunk.size()), 0)) > 0;) {
    const auto end = chunk.begin() + size;
    for (auto begin = chunk.begin(); begin != end;) {
      const auto nul = std::find(begin, end, '\0');
      message.append(begin, nul);
      if (nul == end) break;
      Keep(ParseJson(std::exchange(message, {})));
      begin = nul + 1;
    }
  }
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
  }
  notify_();
}

void Transport::Keep(JsonPtr message) {
  if (message == nullptr) return;
  {
    const std::lock_guard lock(mutex_);
    received_.push_back(std::move(message));
  }
  notify_();
}

}  // namespace testbrowser::engine

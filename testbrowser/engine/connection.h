// Requests, replies and events of the DevTools protocol, on the UI thread.
#pragma once

#include <windows.h>
#include <chrono>
#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "com/owned.h"
#include "engine/json.h"
#include "engine/transport.h"
#include "engine/wakeup_window.h"

namespace testbrowser::engine {

/// A reply: the result, or the protocol's error text ("" when the connection or the session ended).
using Reply = std::expected<JsonPtr, std::string>;
using ReplyHandler = std::function<void(Reply)>;

class Connection {
 public:
  /// Takes the session ("" for the browser's own), the event's name and its parameters.
  using EventHandler =
      std::function<void(const std::string& session, const std::string& method, const cJSON* params)>;

  explicit Connection(UniqueSocket socket);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Who hears of events, and of the end of the connection (an event without a name).
  void SetEventHandler(EventHandler handler) { on_event_ = std::move(handler); }

  /// Sends a request without waiting. The handler is called once, later, or never once the connection is
  /// destroyed.
  void Send(const std::string& session, const char* method, JsonPtr params = nullptr,
            ReplyHandler handler = nullptr);
  /// Sends a request and waits for its reply; events are handled meanwhile. Without a limit Chromium itself is asked,
  /// no page: it answers in seconds, or leaves a trace.
  Reply Request(const std::string& session, const char* method, JsonPtr params = nullptr,
                std::optional<std::chrono::milliseconds> limit = {});
  /// Handles messages until the condition holds.
  /// @return false when the connection or the process is about to end, or the time is over.
  bool WaitUntil(const std::function<bool()>& condition, std::optional<std::chrono::milliseconds> limit = {});
  /// Answers what a session still owes, because it ended.
  void FailSession(const std::string& session);
  bool IsOpen() const { return transport_.IsOpen(); }
  /// Whether the program is told to end: no wait succeeds any more.
  bool IsQuitting() const { return quitting_; }

  /// While one lives, waits also dispatch window messages: a script is blocked by a box on the screen, and
  /// whoever answers it (or looks at the page meanwhile) comes in by window messages.
  class DispatchScope {
   public:
    explicit DispatchScope(Connection& connection) : connection_(connection) { ++connection_.dispatching_; }
    ~DispatchScope() { --connection_.dispatching_; }
    DispatchScope(const DispatchScope&) = delete;
    DispatchScope& operator=(const DispatchScope&) = delete;

   private:
    Connection& connection_;
  };

 private:
  struct Pending {
    std::string session;
    ReplyHandler handler;
  };
  void HandleAll();
  void Handle(cJSON* message);
  void Answer(std::map<int, Pending>::iterator pending, Reply reply);
  void TellEnd();
  bool WaitForMessage(std::optional<DWORD> limit);
  void DispatchWindowMessages();

  quillmate::com::UniqueHandle arrived_;
  WakeupWindow wakeup_;
  EventHandler on_event_;
  std::map<int, Pending> pending_;
  int last_id_ = 0;
  int dispatching_ = 0;
  bool end_told_ = false;
  bool quitting_ = false;
  Transport transport_;  // last: its thread uses the members above
};

}  // namespace testbrowser::engine

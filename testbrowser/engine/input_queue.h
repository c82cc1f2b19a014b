// Hands mouse and key input to a page in order, without making the caller wait.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "engine/input_event.h"
#include "engine/session.h"

namespace testbrowser::engine {

class InputQueue {
 public:
  explicit InputQueue(const Session& session) : session_(session) {}

  void Add(const MouseInput& input);
  void Add(const WheelInput& input);
  void Add(const KeyInput& input);
  /// Whether the page has had all that was added.
  bool IsIdle() const { return waiting_.empty() && unanswered_ == 0; }
  /// The page began a drag of its own kind (HTML5): what follows are drag events. Parameters of
  /// Input.dragIntercepted.
  void BeginDrag(const cJSON* params);

 private:
  /// One input; what it becomes is decided when its turn comes, for a drag may have begun meanwhile.
  struct Entry {
    const char* method;
    JsonPtr params;
    MouseInput mouse;
    bool is_mouse = false;
  };
  void Push(Entry entry);
  void SendReady();
  void AwaitDrag();
  void OnHandled(bool was_awaited);
  void SendMouse(const MouseInput& input, const ReplyHandler& done);
  void SendDrag(const char* type, const MouseInput& at, ReplyHandler done = nullptr);

  const Session& session_;
  std::deque<Entry> waiting_;
  bool awaiting_reply_ = false;
  int unanswered_ = 0;  ///< inputs sent that the page has not dealt with yet
  unsigned held_ = 0;   ///< ButtonSet after what was sent last
  JsonPtr drag_data_;
  bool drag_entered_ = false;
  /// Replies may come after the page is gone.
  std::shared_ptr<InputQueue*> self_ = std::make_shared<InputQueue*>(this);
};

}  // namespace testbrowser::engine

#include "engine/input_queue.h"

#include <windows.h>

#include "com/encoding.h"
#include "engine/key_names.h"

namespace testbrowser::engine {
namespace {

const char* ButtonName(MouseButton button) {
  switch (button) {
    case MouseButton::kLeft:
      return "left";
    case MouseButton::kRight:
      return "right";
    case MouseButton::kMiddle:
      return "middle";
    default:
      return "none";
  }
}

/// A move carries the button that is held, so that the page sees a drag.
MouseButton ButtonOf(const MouseInput& input) {
  if (input.type != MouseInput::Type::kMove) return input.button;
  if ((input.held & kLeftHeld) != 0) return MouseButton::kLeft;
  if ((input.held & kRightHeld) != 0) return MouseButton::kRight;
  return (input.held & kMiddleHeld) != 0 ? MouseButton::kMiddle : MouseButton::kNone;
}

const char* TypeName(MouseInput::Type type) {
  if (type == MouseInput::Type::kMove) return "mouseMoved";
  return type == MouseInput::Type::kPress ? "mousePressed" : "mouseReleased";
}

JsonPtr MouseParams(const MouseInput& input) {
  return JsonObject()
      .Add("type", TypeName(input.type))
      .Add("x", input.x)
      .Add("y", input.y)
      .Add("button", ButtonName(ButtonOf(input)))
      .Add("buttons", static_cast<int>(input.held))
      .Add("clickCount", input.clicks)
      .Add("modifiers", static_cast<int>(input.modifiers))
      .Take();
}

JsonPtr WheelParams(const WheelInput& input) {
  constexpr double kPixelsPerUnit = 100.0 / WHEEL_DELTA;
  return JsonObject()
      .Add("type", "mouseWheel")
      .Add("x", input.x)
      .Add("y", input.y)
      .Add("deltaX", input.delta_x * kPixelsPerUnit)
      .Add("deltaY", -input.delta_y * kPixelsPerUnit)
      .Add("modifiers", static_cast<int>(input.modifiers))
      .Take();
}

/// What the key types; the control characters that WM_CHAR brings for chords and editing keys are no text.
std::string TypedText(const KeyInput& input) {
  const bool types = input.down && !input.text.empty() && (input.text[0] >= L' ' || input.text == L"\r");
  return types ? quillmate::com::ToUtf8(input.text) : "";
}

JsonPtr KeyParams(const KeyInput& input) {
  const KeyName name = NameOf(input);
  const std::string text = TypedText(input);
  JsonObject params;
  params.Add("type", !input.down    ? "keyUp"
                     : text.empty() ? "rawKeyDown"
                                    : "keyDown")
      .Add("modifiers", static_cast<int>(input.modifiers))
      .Add("windowsVirtualKeyCode", static_cast<int>(input.virtual_key))
      .Add("nativeVirtualKeyCode", static_cast<int>(input.virtual_key))
      .Add("key", name.key)
      .Add("code", name.code)
      .Add("location", name.location)
      .Add("isKeypad", name.code.starts_with("Numpad"))
      .Add("autoRepeat", input.repeat)
      .Add("isSystemKey", (input.modifiers & kAlt) != 0);
  if (!text.empty()) params.Add("text", text).Add("unmodifiedText", text);
  return params.Take();
}

constexpr char kMouse[] = "Input.dispatchMouseEvent";
constexpr char kKey[] = "Input.dispatchKeyEvent";
constexpr char kDrag[] = "Input.dispatchDragEvent";

}  // namespace

void InputQueue::Add(const MouseInput& input) { Push({kMouse, nullptr, input, true}); }
void InputQueue::Add(const WheelInput& input) { Push({kMouse, WheelParams(input), {}, false}); }
void InputQueue::Add(const KeyInput& input) { Push({kKey, KeyParams(input), {}, false}); }

void InputQueue::Push(Entry entry) {
  waiting_.push_back(std::move(entry));
  SendReady();
}

void InputQueue::SendReady() {
  while (!awaiting_reply_ && !waiting_.empty()) {
    Entry entry = std::move(waiting_.front());
    waiting_.pop_front();
    if (entry.is_mouse) held_ = entry.mouse.held;
    // Chromium merges moves that wait for the same frame, and says only afterwards that a drag began. So
    // while a button is held, each move is seen to its end before what follows it.
    const bool is_awaited = awaiting_reply_ = entry.is_mouse && held_ != 0;
    ++unanswered_;
    ReplyHandler done = [self = std::weak_ptr(self_), is_awaited](const Reply&) {
      const auto queue = self.lock();
      if (queue == nullptr) return;
      if (is_awaited && (*queue)->drag_data_ == nullptr) return (*queue)->AwaitDrag();
      (*queue)->OnHandled(is_awaited);
    };
    if (entry.is_mouse) {
      SendMouse(entry.mouse, done);
    } else {
      session_.Send(entry.method, std::move(entry.params), std::move(done));
    }
  }
}

/// The news that a drag began comes on another way than the reply to the move that began it, but on the same as the
/// reply of the page's scripts.
void InputQueue::AwaitDrag() {
  session_.Send("Runtime.evaluate", JsonObject().Add("expression", "0").Take(),
                [self = std::weak_ptr(self_)](const Reply&) {
                  if (const auto queue = self.lock()) (*queue)->OnHandled(true);
                });
}

void InputQueue::OnHandled(bool was_awaited) {
  --unanswered_;
  if (!was_awaited) return;
  awaiting_reply_ = false;
  SendReady();
}

void InputQueue::SendMouse(const MouseInput& input, const ReplyHandler& done) {
  if (drag_data_ == nullptr) {
    session_.Send(kMouse, MouseParams(input), done);
    return;
  }
  if (!std::exchange(drag_entered_, true)) SendDrag("dragEnter", input);
  if (input.type == MouseInput::Type::kMove) return SendDrag("dragOver", input, done);
  SendDrag("dragOver", input);  // the drop is refused where no "over" came before
  SendDrag("drop", input);
  drag_data_ = nullptr;
  session_.Send(kMouse, MouseParams(input), done);
}

void InputQueue::SendDrag(const char* type, const MouseInput& at, ReplyHandler done) {
  session_.Send(kDrag,
                JsonObject()
                    .Add("type", type)
                    .Add("x", at.x)
                    .Add("y", at.y)
                    .Add("data", JsonPtr(cJSON_Duplicate(drag_data_.get(), TRUE)))
                    .Add("modifiers", static_cast<int>(at.modifiers))
                    .Take(),
                std::move(done));
}

void InputQueue::BeginDrag(const cJSON* params) {
  drag_data_ = JsonPtr(cJSON_Duplicate(Member(params, "data"), TRUE));
  drag_entered_ = false;
}

}  // namespace testbrowser::engine

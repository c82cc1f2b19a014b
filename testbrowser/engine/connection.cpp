#include "engine/connection.h"

#include <algorithm>

#include "engine/switches.h"
#include "engine/trace.h"

namespace testbrowser::engine {

Connection::Connection(UniqueSocket socket)
    : arrived_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      wakeup_([this] { HandleAll(); }),
      transport_(std::move(socket), [this] {
        SetEvent(arrived_.get());
        wakeup_.Wake();
      }) {}

Connection::~Connection() = default;

void Connection::Send(const std::string& session, const char* method, JsonPtr params, ReplyHandler handler) {
  const int id = ++last_id_;
  JsonObject message;
  message.Add("id", id).Add("method", method);
  if (!session.empty()) message.Add("sessionId", session);
  if (params != nullptr) message.Add("params", std::move(params));
  if (handler) pending_.emplace(id, Pending{session, std::move(handler)});
  transport_.Send(PrintJson(message.Take().get()));
}

Reply Connection::Request(const std::string& session, const char* method, JsonPtr params,
                          std::optional<std::chrono::milliseconds> limit) {
  // Shared: after a wait given up, the reply may still come.
  const auto reply = std::make_shared<std::optional<Reply>>();
  Send(session, method, std::move(params), [reply](Reply answer) { *reply = std::move(answer); });
  constexpr std::chrono::seconds kUsualLimit(20);
  if (WaitUntil([&] { return reply->has_value(); }, limit.value_or(kUsualLimit))) return std::move(**reply);
  if (!limit && IsOpen() && !quitting_) Trace(std::string("no answer to ") + method);
  return std::unexpected(std::string());
}

bool Connection::WaitUntil(const std::function<bool()>& condition,
                           std::optional<std::chrono::milliseconds> limit) {
  const ULONGLONG start = GetTickCount64();
  for (;;) {
    HandleAll();
    if (condition()) return true;
    if (!IsOpen() || quitting_) return false;
    std::optional<DWORD> left;
    if (limit) {
      const auto passed = static_cast<long long>(GetTickCount64() - start);
      if (passed >= limit->count()) return false;
      left = static_cast<DWORD>(limit->count() - passed);
    }
    if (!WaitForMessage(left)) return false;
  }
}

bool Connection::WaitForMessage(std::optional<DWORD> limit) {
  const HANDLE arrived = arrived_.get();
  const DWORD milliseconds = limit.value_or(INFINITE);
  if (dispatching_ == 0 && SwitchText("hung-frame") != "answers") {
    return WaitForSingleObject(arrived, milliseconds) == WAIT_OBJECT_0;
  }
  if (dispatching_ == 0) {
    // The frame belongs to another process than the tab in the real browser: it answers while the tab works.
    const DWORD woken = MsgWaitForMultipleObjectsEx(1, &arrived, milliseconds, QS_SENDMESSAGE, 0);
    MSG none;
    if (woken == WAIT_OBJECT_0 + 1) PeekMessageW(&none, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    return woken <= WAIT_OBJECT_0 + 1;
  }
  const DWORD woken =
      MsgWaitForMultipleObjectsEx(1, &arrived, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  if (woken == WAIT_OBJECT_0 + 1) DispatchWindowMessages();
  return woken <= WAIT_OBJECT_0 + 1;
}

void Connection::DispatchWindowMessages() {
  MSG message;
  // One at a time: the box may be answered, and the wait over, after any of them.
  if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) return;
  if (message.message == WM_QUIT) {
    quitting_ = true;
    PostQuitMessage(static_cast<int>(message.wParam));
    return;
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void Connection::HandleAll() {
  while (const JsonPtr message = transport_.Take()) Handle(message.get());
  if (!IsOpen()) TellEnd();
}

void Connection::Handle(cJSON* message) {
  const cJSON* id = Member(message, "id");
  if (id == nullptr) {
    if (on_event_)
      on_event_(MemberText(message, "sessionId"), MemberText(message, "method"), Member(message, "params"));
    return;
  }
  const auto pending = pending_.find(id->valueint);
  if (pending == pending_.end()) return;
  if (const cJSON* error = Member(message, "error")) {
    Answer(pending, std::unexpected(MemberText(error, "message")));
  } else {
    Answer(pending, JsonPtr(cJSON_DetachItemFromObjectCaseSensitive(message, "result")));
  }
}

void Connection::Answer(std::map<int, Pending>::iterator pending, Reply reply) {
  // Out of the map first: a handler may send, wait and answer others.
  const ReplyHandler handler = std::move(pending->second.handler);
  pending_.erase(pending);
  handler(std::move(reply));
}

void Connection::FailSession(const std::string& session) {
  const auto owed = [&] {
    return std::ranges::find_if(pending_, [&](const auto& entry) { return entry.second.session == session; });
  };
  for (auto pending = owed(); pending != pending_.end(); pending = owed()) {
    Answer(pending, std::unexpected(std::string()));
  }
}

void Connection::TellEnd() {
  if (end_told_) return;
  end_told_ = true;
  while (!pending_.empty()) Answer(pending_.begin(), std::unexpected(std::string()));
  if (on_event_) on_event_("", "", nullptr);
}

}  // namespace testbrowser::engine

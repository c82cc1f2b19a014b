#include "engine/questions.h"

#include "engine/trace.h"

namespace testbrowser::engine {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr char kCallAgent[] =
    "function(...call) { return window[Symbol.for('testbrowser.engine')].once(...call); }";
/// Between two documents a frame has no context for a moment.
constexpr seconds kContextLimit(5);
/// After this time without an answer it is asked whether the page is busy at all.
constexpr seconds kPatience(2);

bool HasContext(const PageParts& page, const FrameId& id, const std::string& context) {
  const auto* frame = page.frames.Find(id);
  return frame != nullptr && frame->context == context;
}

/// Whether the page answers another question meanwhile: then its script does not run any more.
bool IsIdle(const PageParts& page, const std::string& context) {
  constexpr milliseconds kLimit(500);
  JsonPtr params = JsonObject().Add("expression", "0").Add("uniqueContextId", context).Take();
  return page.session.connection->Request(page.session.id, "Runtime.evaluate", std::move(params), kLimit)
      .has_value();
}

/// Waits until the answer is there or cannot come any more.
template <class IsAnswered>
void AwaitAnswer(const PageParts& page, const FrameId& id, const std::string& context,
                 const std::string& what, IsAnswered is_answered) {
  constexpr milliseconds kLastWords(500);
  const auto is_over = [&] { return is_answered() || page.closed || !HasContext(page, id, context); };
  Connection& connection = *page.session.connection;
  while (!connection.WaitUntil(is_over, kPatience)) {
    if (!connection.IsOpen() || connection.IsQuitting()) return;
    if (page.boxes.IsUp() || !IsIdle(page, context) || page.boxes.IsUp()) continue;
    if (connection.WaitUntil(is_over, kLastWords)) break;
    return Trace("no answer to " + what + " from a page that runs no script");
  }
  if (!connection.WaitUntil(is_answered, kLastWords))
    Trace("no answer to " + what + " from a page that went");
}

/// In the real browser a call comes to the thread that has just dealt with the input.
void AwaitInput(const PageParts& page) {
  constexpr seconds kLimit(5);
  const auto is_over = [&] { return page.input.IsIdle() || page.boxes.IsUp() || page.closed; };
  Connection& connection = *page.session.connection;
  if (!connection.WaitUntil(is_over, kLimit) && connection.IsOpen()) Trace("the page keeps input to itself");
}

JsonPtr AgentCall(const std::string& context, int number, std::string_view name, JsonPtr args) {
  JsonPtr arguments =
      JsonArray(JsonObject().Add("value", number).Take(), JsonObject().Add("value", name).Take(),
                JsonObject().Add("value", std::move(args)).Take());
  return JsonObject()
      .Add("functionDeclaration", kCallAgent)
      .Add("uniqueContextId", context)
      .Add("arguments", std::move(arguments))
      .Add("userGesture", true)
      .Add("returnByValue", true)
      .Take();
}

}  // namespace

std::string ContextOf(const PageParts& page, const FrameId& id) {
  const auto ready_or_gone = [&] {
    const auto* frame = page.frames.Find(id);
    return page.closed || frame == nullptr || !frame->context.empty();
  };
  page.session.connection->WaitUntil(ready_or_gone, kContextLimit);
  const auto* frame = page.frames.Find(id);
  return frame != nullptr && !page.closed ? frame->context : "";
}

Reply RequestIn(const PageParts& page, const FrameId& id, const std::string& context, const char* method,
                JsonPtr params) {
  // Shared: the answer may come after the wait was given up.
  const auto reply = std::make_shared<std::optional<Reply>>();
  page.session.Send(method, std::move(params), [reply](Reply answer) { *reply = std::move(answer); });
  AwaitAnswer(page, id, context, method, [&] { return reply->has_value(); });
  return reply->has_value() ? std::move(**reply) : std::unexpected(std::string());
}

Reply CallAgent(PageParts& page, const FrameId& id, const std::string& context, std::string_view name,
                JsonPtr args) {
  AwaitInput(page);
  const int number = ++page.last_call;
  if (args == nullptr) args = JsonArray();
  const auto reply = std::make_shared<std::optional<Reply>>();
  const auto take = [reply](Reply answer) {
    const bool is_late = answer && MemberBool(Member(Member(answer->get(), "result"), "value"), "late");
    if (!is_late && !reply->has_value()) *reply = std::move(answer);
  };
  JsonPtr message = JsonObject()
                        .Add("number", number)
                        .Add("name", name)
                        .Add("args", JsonPtr(cJSON_Duplicate(args.get(), 1)))
                        .Take();
  page.back_channel.Put(number, id, std::move(message), take);
  // Both ways: nobody can tell whether the page is left at this moment, or stays after all.
  page.session.Send("Runtime.callFunctionOn", AgentCall(context, number, name, std::move(args)), take);
  AwaitAnswer(page, id, context, "call of " + std::string(name), [&] { return reply->has_value(); });
  page.back_channel.Withdraw(number);
  return reply->has_value() ? std::move(**reply) : std::unexpected(std::string());
}

}  // namespace testbrowser::engine

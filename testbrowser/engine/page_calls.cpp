// Calls of a page's scripts: a function of the agent or a script text, in one frame's main world.
#include "engine/page.h"
#include "engine/page_parts.h"
#include "engine/questions.h"

namespace testbrowser::engine {
namespace {

using CallResult = std::expected<JsonPtr, CallError>;

std::unexpected<CallError> Gone(const PageParts& page) {
  const bool engine_gone = page.closed || !page.session.connection->IsOpen();
  return std::unexpected(
      CallError{engine_gone ? CallError::Kind::kEngineGone : CallError::Kind::kFrameGone, ""});
}

std::string ExceptionText(const cJSON* details) {
  const cJSON* exception = Member(details, "exception");
  if (std::string text = MemberText(exception, "description"); !text.empty()) return text;
  if (const cJSON* value = Member(exception, "value")) {
    return cJSON_IsString(value) != 0 ? value->valuestring : PrintJson(value);
  }
  return MemberText(details, "text");
}

/// Numbers that JSON cannot write come as text.
JsonPtr TakeValue(cJSON* result) {
  if (cJSON* value = cJSON_DetachItemFromObjectCaseSensitive(result, "value")) return JsonPtr(value);
  const std::string odd = MemberText(result, "unserializableValue");
  return odd.empty() ? JsonNull() : JsonText(odd);
}

/// Chromium takes its time to close a page: the call that closed its dialog returns when that is gone.
void AwaitEnd(const PageParts& page) {
  constexpr std::chrono::seconds kLimit(1);
  if (!page.closes_itself) return;
  page.session.connection->WaitUntil([&] { return page.closed || page.boxes.IsUp(); }, kLimit);
}

/// What Runtime.callFunctionOn and Runtime.evaluate answer, as a call's result.
CallResult ToResult(const PageParts& page, Reply reply) {
  if (!reply) return Gone(page);
  if (const cJSON* details = Member(reply->get(), "exceptionDetails")) {
    return std::unexpected(CallError{CallError::Kind::kScript, ExceptionText(details)});
  }
  return TakeValue(cJSON_GetObjectItemCaseSensitive(reply->get(), "result"));
}

JsonPtr AgentElement(const std::string& context, int node) {
  return JsonObject()
      .Add("functionDeclaration",
           "function(number) { return window[Symbol.for('testbrowser.agent')].element(number); }")
      .Add("uniqueContextId", context)
      .Add("arguments", JsonArray(JsonObject().Add("value", node).Take()))
      .Take();
}

}  // namespace

CallResult Page::Call(const FrameId& frame, std::string_view function, JsonPtr args) {
  const std::string context = ContextOf(*parts_, frame);
  if (context.empty()) return Gone(*parts_);
  Reply reply = CallAgent(*parts_, frame, context, function, std::move(args));
  AwaitEnd(*parts_);
  return ToResult(*parts_, std::move(reply));
}

CallResult Page::Evaluate(const FrameId& frame, std::string_view script) {
  const std::string context = ContextOf(*parts_, frame);
  if (context.empty()) return Gone(*parts_);
  JsonPtr params = JsonObject()
                       .Add("expression", script)
                       .Add("uniqueContextId", context)
                       .Add("returnByValue", true)
                       .Add("userGesture", true)
                       .Take();
  return ToResult(*parts_, RequestIn(*parts_, frame, context, "Runtime.evaluate", std::move(params)));
}

void Page::AwaitScripts() {
  const auto* frame = parts_->frames.Find(MainFrame());
  if (frame == nullptr || frame->context.empty() || parts_->boxes.IsUp()) return;
  CallAgent(*parts_, MainFrame(), std::string(frame->context), "", nullptr);
}

std::optional<FrameId> Page::FrameOfElement(const FrameId& frame, int node) {
  const std::string context = ContextOf(*parts_, frame);
  if (context.empty()) return {};
  const Reply element =
      RequestIn(*parts_, frame, context, "Runtime.callFunctionOn", AgentElement(context, node));
  if (!element) return {};
  const std::string object = MemberText(Member(element->get(), "result"), "objectId");
  if (object.empty()) return {};
  const Reply described =
      RequestIn(*parts_, frame, context, "DOM.describeNode", JsonObject().Add("objectId", object).Take());
  parts_->session.Send("Runtime.releaseObject", JsonObject().Add("objectId", object).Take());
  if (!described) return {};
  FrameId inner = MemberText(Member(described->get(), "node"), "frameId");
  // A document's own node (HTML) carries the frame that it is in.
  if (inner.empty() || inner == frame) return {};
  return inner;
}

std::optional<int> Page::OwnerElement(const FrameId& frame) {
  const auto parent = ParentFrame(frame);
  const std::string context = parent ? ContextOf(*parts_, *parent) : "";
  if (context.empty()) return {};
  const auto request = [&](const char* method, JsonPtr params) {
    return RequestIn(*parts_, *parent, context, method, std::move(params));
  };
  const Reply owner = request("DOM.getFrameOwner", JsonObject().Add("frameId", frame).Take());
  if (!owner) return {};
  const Reply resolved =
      request("DOM.resolveNode",
              JsonObject().Add("backendNodeId", MemberNumber(owner->get(), "backendNodeId")).Take());
  if (!resolved) return {};
  const std::string object = MemberText(Member(resolved->get(), "object"), "objectId");
  JsonPtr params = JsonObject()
                       .Add("functionDeclaration",
                            "function() { return window[Symbol.for('testbrowser.agent')].numberOf(this); }")
                       .Add("objectId", object)
                       .Add("returnByValue", true)
                       .Take();
  const CallResult number = ToResult(*parts_, request("Runtime.callFunctionOn", std::move(params)));
  parts_->session.Send("Runtime.releaseObject", JsonObject().Add("objectId", object).Take());
  if (!number || cJSON_IsNumber(number->get()) == 0) return {};
  return (*number)->valueint;
}

}  // namespace testbrowser::engine

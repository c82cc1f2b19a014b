#include "engine/back_channel.h"

#include <windows.h>
#include <wincrypt.h>
#include <cstdlib>
#include <utility>

namespace testbrowser::engine {
namespace {

constexpr std::string_view kAddress = "https://testbrowser.invalid/calls?";

std::string ToBase64(const std::string& text) {
  constexpr DWORD kFlags = CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF;
  const auto* bytes = reinterpret_cast<const BYTE*>(text.data());
  const auto count = static_cast<DWORD>(text.size());
  DWORD size = 0;
  CryptBinaryToStringA(bytes, count, kFlags, nullptr, &size);
  std::string encoded(size, '\0');
  CryptBinaryToStringA(bytes, count, kFlags, encoded.data(), &size);
  encoded.resize(size);
  return encoded;
}

/// Pages of any origin may read the answer.
JsonPtr AnswerHeaders() {
  return JsonArray(JsonObject().Add("name", "Access-Control-Allow-Origin").Add("value", "*").Take());
}

/// The page's report as the protocol would tell it.
JsonPtr ToResult(const cJSON* report) {
  if (const std::string error = MemberText(report, "error"); !error.empty()) {
    return JsonObject().Add("exceptionDetails", JsonObject().Add("text", error).Take()).Take();
  }
  JsonObject result;
  if (const cJSON* value = Member(report, "value")) result.Add("value", JsonPtr(cJSON_Duplicate(value, 1)));
  return JsonObject().Add("result", result.Take()).Take();
}

}  // namespace

void BackChannel::Put(int number, const FrameId& frame, JsonPtr call, ReplyHandler handler) {
  calls_[number] = {frame, std::move(call), std::move(handler)};
  GiveNext(frame);
}

bool BackChannel::OnRequest(const cJSON* params) {
  const std::string url = MemberText(Member(params, "request"), "url");
  if (!url.starts_with(kAddress)) return false;
  const FrameId frame = MemberText(params, "frameId");
  held_[frame] = {MemberText(params, "requestId"), std::atof(url.c_str() + kAddress.size())};
  GiveNext(frame);
  return true;
}

void BackChannel::GiveNext(const FrameId& frame) {
  const auto held = held_.find(frame);
  if (held == held_.end() || held->second.request.empty()) return;
  for (auto& [number, call] : calls_) {
    if (call.frame != frame || call.message == nullptr) continue;
    const JsonPtr message = std::exchange(call.message, nullptr);
    return Fulfill(held->second, message.get());
  }
}

void BackChannel::Fulfill(Held& held, const cJSON* message) {
  session_.Send("Fetch.fulfillRequest", JsonObject()
                                            .Add("requestId", std::exchange(held.request, {}))
                                            .Add("responseCode", 200)
                                            .Add("responseHeaders", AnswerHeaders())
                                            .Add("body", ToBase64(PrintJson(message)))
                                            .Take());
}

void BackChannel::OnAnswer(const cJSON* report) {
  const auto found = calls_.find(static_cast<int>(MemberNumber(report, "number")));
  if (found == calls_.end()) return;
  const ReplyHandler handler = std::move(found->second.handler);
  calls_.erase(found);
  handler(ToResult(report));
}

void BackChannel::Close() {
  for (auto& [frame, held] : std::exchange(held_, {})) {
    if (!held.request.empty()) Fulfill(held, JsonObject().Add("stay", held.departure).Take().get());
  }
}

}  // namespace testbrowser::engine

#include "engine/engine_parts.h"

#include <algorithm>

namespace testbrowser::engine {

void EngineParts::Listen() {
  connection->SetEventHandler([this](const std::string& session, const std::string& method,
                                     const cJSON* params) { HandleEvent(session, method, params); });
  const auto on_pages = [] { return JsonArray(JsonObject().Add("type", "page").Take()); };
  connection->Send("", "Target.setDiscoverTargets",
                   JsonObject().Add("discover", true).Add("filter", on_pages()).Take());
  connection->Send("", "Target.setAutoAttach",
                   JsonObject()
                       .Add("autoAttach", true)
                       .Add("waitForDebuggerOnStart", true)
                       .Add("flatten", true)
                       .Add("filter", on_pages())
                       .Take());
}

std::shared_ptr<Page> EngineParts::OpenPage(PageListener* listener, std::chrono::milliseconds limit) {
  const Reply created = connection->Request(
      "", "Target.createTarget", JsonObject().Add("url", "about:blank").Add("newWindow", true).Take(), limit);
  if (!created) return nullptr;
  const std::string target = MemberText(created->get(), "targetId");
  if (!connection->WaitUntil([&] { return FindTarget(target) != nullptr; }, limit)) return nullptr;
  const OpenedPage& opened = *FindTarget(target);
  opened.parts->listener = listener;
  opened.parts->session.Send("Runtime.runIfWaitingForDebugger");
  return opened.page;
}

void EngineParts::HandleEvent(const std::string& session, const std::string& method, const cJSON* params) {
  if (const auto found = pages.find(session); found != pages.end()) {
    const std::shared_ptr<Page> alive = found->second.page;
    found->second.parts->HandleEvent(method, params);
    return;
  }
  if (method.empty()) return EndAll(true);
  if (method == "Target.attachedToTarget") return OnAttached(params);
  if (method == "Target.detachedFromTarget") return Forget(MemberText(params, "sessionId"), false);
  if (method == "Target.targetInfoChanged") return OnTargetInfo(Member(params, "targetInfo"));
  if (method == "Target.targetCrashed") {
    if (const OpenedPage* page = FindTarget(MemberText(params, "targetId")))
      Forget(page->parts->session.id, true);
  }
}

void EngineParts::OnAttached(const cJSON* params) {
  const std::string session = MemberText(params, "sessionId");
  auto parts = std::make_unique<PageParts>(Session{connection, session},
                                           MemberText(Member(params, "targetInfo"), "targetId"));
  parts->SetUp(scripts);
  PageParts* inner = parts.get();
  pages.emplace(session, OpenedPage{std::make_shared<Page>(std::move(parts)), inner});
}

void EngineParts::OnTargetInfo(const cJSON* info) {
  if (const OpenedPage* page = FindTarget(MemberText(info, "targetId"))) {
    page->parts->ChangeTitle(MemberText(info, "title"));
  }
}

void EngineParts::Forget(const std::string& session, bool crashed) {
  const auto found = pages.find(session);
  if (found == pages.end()) return;
  const OpenedPage page = found->second;
  pages.erase(found);
  page.parts->MarkClosed(crashed);
}

void EngineParts::EndAll(bool crashed) {
  while (!pages.empty()) Forget(std::string(pages.begin()->first), crashed);
}

EngineParts::OpenedPage* EngineParts::FindTarget(const std::string& target) {
  const auto found =
      std::ranges::find_if(pages, [&](const auto& entry) { return entry.second.parts->target == target; });
  return found != pages.end() ? &found->second : nullptr;
}

}  // namespace testbrowser::engine

#include "engine/engine_parts.h"

#include <algorithm>

#include "engine/shims.h"

namespace testbrowser::engine {
namespace {

/// A machine busy with other things takes several seconds.
constexpr std::chrono::seconds kCreateLimit(20);

JsonPtr OnPagesOnly() { return JsonArray(JsonObject().Add("type", "page").Take()); }

}  // namespace

void EngineParts::Listen() {
  connection->SetEventHandler([this](const std::string& session, const std::string& method,
                                     const cJSON* params) { HandleEvent(session, method, params); });
  connection->Send("", "Target.setDiscoverTargets",
                   JsonObject().Add("discover", true).Add("filter", OnPagesOnly()).Take());
  connection->Send("", "Target.setAutoAttach",
                   JsonObject()
                       .Add("autoAttach", true)
                       .Add("waitForDebuggerOnStart", true)
                       .Add("flatten", true)
                       .Add("filter", OnPagesOnly())
                       .Take());
}

EngineParts::OpenedPage* EngineParts::Create() {
  ++creating;
  const Reply created =
      connection->Request("", "Target.createTarget",
                          JsonObject().Add("url", "about:blank").Add("newWindow", true).Take(), kCreateLimit);
  const std::string target = created ? MemberText(created->get(), "targetId") : "";
  const bool attached =
      created && connection->WaitUntil([&] { return FindTarget(target) != nullptr; }, kCreateLimit);
  --creating;
  OpenedPage* opened = attached ? FindTarget(target) : nullptr;
  if (opened != nullptr) opened->claimed = true;
  OfferPopups();
  return opened;
}

void EngineParts::StartBlank(PageParts& page) {
  // The blank document loads while Chromium still works through what the page was told before. A navigation
  // from there would overtake it, and the document would do without our scripts.
  const auto set_up = std::make_shared<bool>(false);
  page.session.Send("Runtime.runIfWaitingForDebugger", nullptr, [set_up](const Reply&) { *set_up = true; });
  connection->WaitUntil([&] { return (page.blank_loaded && *set_up) || page.closed; }, kCreateLimit);
  if (const Reply history = page.session.Request("Page.getNavigationHistory")) {
    page.unasked_entry = MemberNumber(cJSON_GetArrayItem(Member(history->get(), "entries"), 0), "id");
  }
}

std::shared_ptr<Page> EngineParts::OpenPage(PageListener* listener) {
  const OpenedPage* opened = Create();
  if (opened == nullptr) return nullptr;
  const auto page = opened->page;
  StartBlank(*opened->parts);
  page->SetListener(listener);
  return page;
}

std::shared_ptr<Page> EngineParts::OpenDialog(PageParts& opener, const cJSON* request,
                                              std::function<void(JsonPtr)> finished) {
  const std::string arguments = PrintJson(Member(request, "arguments"));
  const std::string url = MemberText(request, "url");
  const std::string features = MemberText(request, "features");
  const OpenedPage* opened = opener.listener != nullptr ? Create() : nullptr;
  if (opened == nullptr) {
    finished(nullptr);
    return nullptr;
  }
  const auto dialog = opened->page;
  PageParts& parts = *opened->parts;
  parts.on_dialog_finished = std::move(finished);
  parts.AddScript(shims::kDialogWindow + ("(" + arguments + ");"));
  StartBlank(parts);
  opener.Tell([&](PageListener& to) { to.OnModalDialog({dialog, features}); });
  if (parts.listener == nullptr) {
    dialog->Close();
  } else {
    dialog->Navigate(url);
  }
  return dialog;
}

void EngineParts::HandleEvent(const std::string& session, const std::string& method, const cJSON* params) {
  if (session.empty()) return HandleBrowserEvent(method, params);
  const auto found = pages.find(session);
  if (found == pages.end()) return;
  if (method == "Page.windowOpen") window_opener = session;
  const std::shared_ptr<Page> alive = found->second.page;
  found->second.parts->HandleEvent(method, params);
}

void EngineParts::HandleBrowserEvent(const std::string& method, const cJSON* params) {
  if (method.empty()) return EndAll(true);
  if (method == "Target.attachedToTarget") return OnAttached(params);
  if (method == "Target.detachedFromTarget") return Forget(MemberText(params, "sessionId"), false);
  if (method != "Target.targetCrashed") return;
  if (const OpenedPage* page = FindTarget(MemberText(params, "targetId")))
    Forget(page->parts->session.id, true);
}

void EngineParts::OnAttached(const cJSON* params) {
  const cJSON* target = Member(params, "targetInfo");
  const std::string session = MemberText(params, "sessionId");
  auto parts =
      std::make_unique<PageParts>(Session{connection, session}, MemberText(target, "targetId"), *this);
  parts->SetUp(scripts);
  PageParts* inner = parts.get();
  pages[session] = {std::make_shared<Page>(std::move(parts)), inner, MemberText(target, "openerId")};
  OfferPopups();
}

void EngineParts::OfferPopups() {
  const auto is_popup = [this](const auto& entry) {
    return !entry.second.claimed && (creating == 0 || !entry.second.opener.empty());
  };
  for (auto next = std::ranges::find_if(pages, is_popup); next != pages.end();
       next = std::ranges::find_if(pages, is_popup)) {
    next->second.claimed = true;
    OfferPopup(OpenedPage(next->second));
  }
}

void EngineParts::OfferPopup(const OpenedPage& popup) {
  // A link that hides its opener (rel=noopener) is known by its page's announcement only.
  const OpenedPage* opener = FindTarget(popup.opener);
  const auto announced = pages.find(window_opener);
  if (opener == nullptr && announced != pages.end()) opener = &announced->second;
  if (opener != nullptr) opener->parts->Tell([&](PageListener& to) { to.OnPopup(popup.page); });
  popup.parts->session.Send("Runtime.runIfWaitingForDebugger");
  if (popup.parts->listener == nullptr) popup.page->Close();
}

void EngineParts::Forget(const std::string& session, bool crashed) {
  const auto found = pages.find(session);
  if (found == pages.end()) return;
  const OpenedPage page = std::move(found->second);
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

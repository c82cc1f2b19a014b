// The protocol's events of one page, as calls of its parts and its listener.
#include <map>

#include "engine/file_address.h"
#include "engine/page_parts.h"

namespace testbrowser::engine {
namespace {

void FinishLoad(PageParts& page, const FrameId& id) {
  FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr || !std::exchange(frame->is_loading, false)) return;
  page.Tell([&](PageListener& listener) { listener.OnLoadFinished(id); });
}

void StartLoad(PageParts& page, const FrameId& id) {
  FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr || std::exchange(frame->is_loading, true)) return;
  page.Tell([&](PageListener& listener) { listener.OnLoadStarted(id); });
}

void OnFrameAttached(PageParts& page, const cJSON* params) {
  page.frames.Attach(MemberText(params, "frameId"), MemberText(params, "parentFrameId"));
}

void OnFrameDetached(PageParts& page, const cJSON* params) {
  // A swap moves the frame to another process; it stays the same frame.
  if (MemberText(params, "reason") != "swap") page.frames.Detach(MemberText(params, "frameId"));
}

void OnFrameNavigated(PageParts& page, const cJSON* params) {
  const cJSON* description = Member(params, "frame");
  const FrameId id = MemberText(description, "id");
  page.frames.Commit(description);
  const FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr) return;
  const std::string url = frame->url;
  page.Tell([&](PageListener& listener) { listener.OnNavigated(id, url, false); });
}

void OnNavigatedWithinDocument(PageParts& page, const cJSON* params) {
  const FrameId id = MemberText(params, "frameId");
  FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr) return;
  const std::string url = frame->url = ToWindowsAddress(MemberText(params, "url"));
  page.Tell([&](PageListener& listener) { listener.OnNavigated(id, url, true); });
}

void OnFrameStartedNavigating(PageParts& page, const cJSON* params) {
  const std::string type = MemberText(params, "navigationType");
  if (type != "sameDocument" && type != "historySameDocument") StartLoad(page, MemberText(params, "frameId"));
}

void OnFrameStartedLoading(PageParts& page, const cJSON* params) {
  StartLoad(page, MemberText(params, "frameId"));
}
void OnFrameStoppedLoading(PageParts& page, const cJSON* params) {
  FinishLoad(page, MemberText(params, "frameId"));
}

void OnLifecycleEvent(PageParts& page, const cJSON* params) {
  const FrameId id = MemberText(params, "frameId");
  const std::string name = MemberText(params, "name");
  if (name == "load") FinishLoad(page, id);
  if (name == "DOMContentLoaded") page.Tell([&](PageListener& listener) { listener.OnDocumentReady(id); });
}

void OnContextCreated(PageParts& page, const cJSON* params) {
  page.frames.AddContext(Member(params, "context"));
}
void OnContextDestroyed(PageParts& page, const cJSON* params) {
  page.frames.RemoveContext(MemberText(params, "executionContextUniqueId"));
}
void OnContextsCleared(PageParts& page, const cJSON*) { page.frames.RemoveAllContexts(); }

/// Chromium's own dialogs (leaving a page that asks to stay) are not shown: the user leaves.
void OnDialogOpening(PageParts& page, const cJSON*) {
  page.session.Send("Page.handleJavaScriptDialog", JsonObject().Add("accept", true).Take());
}

void OnPaused(PageParts& page, const cJSON*) { page.session.Send("Debugger.resume"); }

void OnScreencastFrame(PageParts& page, const cJSON* params) { page.screencast.AddFrame(params); }
void OnDragIntercepted(PageParts& page, const cJSON* params) { page.input.BeginDrag(params); }

using Handler = void (*)(PageParts&, const cJSON*);
const std::map<std::string, Handler>& Handlers() {
  static const std::map<std::string, Handler> handlers = {
      {"Page.frameAttached", OnFrameAttached},
      {"Page.frameDetached", OnFrameDetached},
      {"Page.frameNavigated", OnFrameNavigated},
      {"Page.navigatedWithinDocument", OnNavigatedWithinDocument},
      {"Page.frameStartedNavigating", OnFrameStartedNavigating},
      {"Page.frameStartedLoading", OnFrameStartedLoading},
      {"Page.frameStoppedLoading", OnFrameStoppedLoading},
      {"Page.lifecycleEvent", OnLifecycleEvent},
      {"Page.screencastFrame", OnScreencastFrame},
      {"Input.dragIntercepted", OnDragIntercepted},
      {"Page.javascriptDialogOpening", OnDialogOpening},
      {"Runtime.executionContextCreated", OnContextCreated},
      {"Runtime.executionContextDestroyed", OnContextDestroyed},
      {"Runtime.executionContextsCleared", OnContextsCleared},
      {"Debugger.paused", OnPaused},
  };
  return handlers;
}

}  // namespace

void PageParts::HandleEvent(const std::string& method, const cJSON* params) {
  const auto handler = Handlers().find(method);
  if (handler != Handlers().end()) handler->second(*this, params);
}

void PageParts::SetUp(const std::vector<std::string>& scripts) {
  session.Send("Page.enable");
  session.Send("Page.getFrameTree", nullptr, [this](Reply reply) {
    if (reply) frames.AddExisting(Member(reply->get(), "frameTree"));
  });
  session.Send("Page.setLifecycleEventsEnabled", JsonObject().Add("enabled", true).Take());
  for (const auto& script : scripts) {
    session.Send("Page.addScriptToEvaluateOnNewDocument",
                 JsonObject().Add("source", script).Add("runImmediately", true).Take());
  }
  session.Send("Runtime.enable");
  session.Send("Debugger.enable");
  session.Send("Input.setInterceptDrags", JsonObject().Add("enabled", true).Take());
  session.Send("Emulation.setFocusEmulationEnabled", JsonObject().Add("enabled", true).Take());
}

void PageParts::ChangeTitle(const std::string& new_title) {
  if (new_title == title) return;
  title = new_title;
  Tell([&](PageListener& to) { to.OnTitleChanged(new_title); });
}

void PageParts::MarkClosed(bool crashed) {
  if (std::exchange(closed, true)) return;
  session.connection->FailSession(session.id);
  Tell([&](PageListener& to) { to.OnClosed(crashed); });
  listener = nullptr;
}

}  // namespace testbrowser::engine

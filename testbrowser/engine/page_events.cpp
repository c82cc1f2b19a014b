// The protocol's events of one page, as calls of its parts and its listener.
#include <cmath>
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
  if (id == page.frames.main()) page.boxes.Drop();  // the script that waits is gone with its document
  const FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr) return;
  const std::string url = frame->url;
  page.Tell([&](PageListener& listener) { listener.OnNavigated(id, url, false); });
}

void OnNavigatedWithinDocument(PageParts& page, const cJSON* params) {
  const FrameId id = MemberText(params, "frameId");
  FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr) return;
  const std::string url = frame->url = MemberText(params, "url");
  page.Tell([&](PageListener& listener) { listener.OnNavigated(id, url, true); });
}

void OnFrameStartedNavigating(PageParts& page, const cJSON* params) {
  const FrameId id = MemberText(params, "frameId");
  const std::string type = MemberText(params, "navigationType");
  if (type == "sameDocument" || type == "historySameDocument") return;
  if (FrameTree::Frame* frame = page.frames.Find(id)) frame->is_committed = false;
  StartLoad(page, id);
}

void OnFrameStartedLoading(PageParts& page, const cJSON* params) {
  StartLoad(page, MemberText(params, "frameId"));
}

/// Usually the load's own event came before. It does not come where nothing is loaded after all (a download,
/// a load broken off); but then this event may also be the previous document's, late.
void OnFrameStoppedLoading(PageParts& page, const cJSON* params) {
  const FrameId id = MemberText(params, "frameId");
  FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr) return;
  const bool is_previous = std::exchange(frame->stop_is_owed, false) && !frame->is_committed;
  if (is_previous) return;
  if (id == page.frames.main()) page.back_channel.Close();
  frame->is_committed = true;
  FinishLoad(page, id);
}

void OnLoaded(PageParts& page, const FrameId& id) {
  FrameTree::Frame* frame = page.frames.Find(id);
  if (frame == nullptr) return;
  if (id == page.frames.main()) page.blank_loaded = true;
  frame->stop_is_owed = true;
  if (frame->is_committed) FinishLoad(page, id);
}

void OnLifecycleEvent(PageParts& page, const cJSON* params) {
  const FrameId id = MemberText(params, "frameId");
  const std::string name = MemberText(params, "name");
  if (name == "load") OnLoaded(page, id);
  if (name == "DOMContentLoaded") page.Tell([&](PageListener& listener) { listener.OnDocumentReady(id); });
}

void OnContextCreated(PageParts& page, const cJSON* params) {
  const cJSON* context = Member(params, "context");
  page.frames.AddContext(context);
  const cJSON* origin = Member(context, "auxData");
  if (MemberBool(origin, "isDefault")) page.back_channel.Forget(MemberText(origin, "frameId"));
}
void OnContextDestroyed(PageParts& page, const cJSON* params) {
  page.frames.RemoveContext(MemberText(params, "executionContextUniqueId"));
}
void OnContextsCleared(PageParts& page, const cJSON*) { page.frames.RemoveAllContexts(); }

/// Chromium's own dialogs (leaving a page that asks to stay) are not shown: the user leaves.
void OnDialogOpening(PageParts& page, const cJSON*) {
  page.session.Send("Page.handleJavaScriptDialog", JsonObject().Add("accept", true).Take());
}

void OnPaused(PageParts& page, const cJSON* params) { page.boxes.OnPaused(params); }
void OnResumed(PageParts& page, const cJSON*) { page.boxes.Drop(); }

/// A local file, asked for by its Windows address, or a page's question for its next call.
void OnRequestPaused(PageParts& page, const cJSON* params) {
  if (page.back_channel.OnRequest(params)) return;
  const std::string url = MemberText(Member(params, "request"), "url");
  page.session.Send(
      "Fetch.continueRequest",
      JsonObject().Add("requestId", MemberText(params, "requestId")).Add("url", ToLinuxAddress(url)).Take());
}

void OnScreencastFrame(PageParts& page, const cJSON* params) { page.screencast.AddFrame(params); }
void OnDragIntercepted(PageParts& page, const cJSON* params) { page.input.BeginDrag(params); }

void OnFileChooserOpened(PageParts& page, const cJSON* params) {
  const double field = MemberNumber(params, "backendNodeId");
  const auto choose = [session = page.session, field](const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    JsonPtr files = JsonArray();
    for (const std::string& path : paths)
      cJSON_AddItemToArray(files.get(), JsonText(LinuxPath(path)).release());
    session.Send("DOM.setFileInputFiles",
                 JsonObject().Add("files", std::move(files)).Add("backendNodeId", field).Take());
  };
  const bool several = MemberText(params, "mode") == "selectMultiple";
  page.Tell([&](PageListener& to) { to.OnFileChooser(several, choose); });
}

void OpenDropDown(PageParts& page, const FrameId& frame, const cJSON* report) {
  DropDown list;
  list.frame = frame;
  const auto edge = [report](const char* name) {
    return static_cast<int>(std::lround(MemberNumber(report, name)));
  };
  list.left = edge("left");
  list.top = edge("top");
  list.right = edge("right");
  list.bottom = edge("bottom");
  list.selected = static_cast<int>(MemberNumber(report, "selected", -1));
  const cJSON* item = nullptr;
  cJSON_ArrayForEach(item, Member(report, "options")) list.options.emplace_back(cJSON_GetStringValue(item));
  cJSON_ArrayForEach(item, Member(report, "enabled")) list.enabled.push_back(cJSON_IsTrue(item) != 0);
  const auto choose = [session = page.session, context = page.frames.Find(frame)->context](int index) {
    const std::string expression =
        "window[Symbol.for('testbrowser.engine')].choose(" + std::to_string(index) + ")";
    session.Send("Runtime.evaluate", JsonObject()
                                         .Add("expression", expression)
                                         .Add("uniqueContextId", context)
                                         .Add("userGesture", true)
                                         .Take());
  };
  page.Tell([&](PageListener& to) { to.OnDropDown(list, choose); });
}

/// A script of ours reports; see the shims.
void OnShimReport(PageParts& page, const cJSON* params) {
  const JsonPtr report = ParseJson(MemberText(params, "payload"));
  const std::string kind = MemberText(report.get(), "kind");
  if (kind == "dropDown") {
    const auto frame =
        page.frames.FrameOfContext(static_cast<int>(MemberNumber(params, "executionContextId")));
    if (frame) OpenDropDown(page, *frame, report.get());
  } else if (kind == "title") {
    page.ChangeTitle(MemberText(report.get(), "title"));
  } else if (kind == "answer") {
    page.back_channel.OnAnswer(report.get());
  } else if (kind == "closeDialog") {
    page.return_value.reset(cJSON_DetachItemFromObjectCaseSensitive(report.get(), "value"));
    page.closes_itself = true;
    page.RequestClose();
  }
}

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
      {"Page.fileChooserOpened", OnFileChooserOpened},
      {"Fetch.requestPaused", OnRequestPaused},
      {"Input.dragIntercepted", OnDragIntercepted},
      {"Page.javascriptDialogOpening", OnDialogOpening},
      {"Runtime.executionContextCreated", OnContextCreated},
      {"Runtime.executionContextDestroyed", OnContextDestroyed},
      {"Runtime.executionContextsCleared", OnContextsCleared},
      {"Runtime.bindingCalled", OnShimReport},
      {"Debugger.paused", OnPaused},
      {"Debugger.resumed", OnResumed},
  };
  return handlers;
}

}  // namespace

void PageParts::HandleEvent(const std::string& method, const cJSON* params) {
  const auto handler = Handlers().find(method);
  if (handler != Handlers().end()) handler->second(*this, params);
}

}  // namespace testbrowser::engine

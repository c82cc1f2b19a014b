#include "engine/page_parts.h"

#include "engine/shims.h"

namespace testbrowser::engine {
namespace {

JsonPtr Enabled(bool enabled = true) { return JsonObject().Add("enabled", enabled).Take(); }

ScriptBoxes::Actions BoxActions(PageParts& page, PageHost& host) {
  return {
      .show_box =
          [&page](const ScriptBox& box, std::function<void(BoxAnswer)> answer) {
            if (page.listener == nullptr) return answer({});
            page.listener->OnMessageBox(box, std::move(answer));
          },
      .take_box_down = [&page] { page.Tell([](PageListener& to) { to.OnMessageBoxGone(); }); },
      .open_dialog =
          [&page, &host](const cJSON* request, std::function<void(JsonPtr)> finished) {
            return host.OpenDialog(page, request, std::move(finished));
          },
  };
}

}  // namespace

PageParts::PageParts(Session page_session, std::string target_id, PageHost& page_host)
    : session(std::move(page_session)),
      target(std::move(target_id)),
      frames(target),
      back_channel(session),
      input(session),
      screencast(session, [this] { Tell([](PageListener& to) { to.OnPicture(); }); }),
      boxes(session, BoxActions(*this, page_host)) {}

void PageParts::SetUp(const std::vector<std::string>& scripts) {
  session.Send("Page.enable");
  session.Send("Page.getFrameTree", nullptr, [this](const Reply& reply) {
    if (reply) frames.AddExisting(Member(reply->get(), "frameTree"));
  });
  session.Send("Page.setLifecycleEventsEnabled", Enabled());
  session.Send("Runtime.enable");
  session.Send("Runtime.addBinding", JsonObject().Add("name", shims::kNotifyBinding).Take());
  AddScript(shims::kReports);
  AddScript(shims::kBackChannel);
  AddScript(shims::kMessageBoxes);
  AddScript(shims::kDropDowns);
  for (const auto& script : scripts) AddScript(script);
  session.Send("Debugger.enable");
  JsonPtr patterns = JsonArray(JsonObject().Add("urlPattern", "file:///?:/*").Take(),
                               JsonObject().Add("urlPattern", BackChannel::kPattern).Take());
  session.Send("Fetch.enable", JsonObject().Add("patterns", std::move(patterns)).Take());
  // Internet Explorer knows no content policies; one of the page's would forbid the back channel too.
  session.Send("Page.setBypassCSP", Enabled());
  session.Send("Input.setInterceptDrags", Enabled());
  session.Send("Page.setInterceptFileChooserDialog", Enabled());
  session.Send("Emulation.setFocusEmulationEnabled", Enabled());
}

void PageParts::AddScript(const std::string& script) {
  session.Send("Page.addScriptToEvaluateOnNewDocument",
               JsonObject().Add("source", script).Add("runImmediately", true).Take());
}

void PageParts::ChangeTitle(const std::string& new_title) {
  if (new_title == title) return;
  title = new_title;
  Tell([&](PageListener& to) { to.OnTitleChanged(new_title); });
}

void PageParts::RequestClose() {
  session.connection->Send("", "Target.closeTarget", JsonObject().Add("targetId", target).Take());
}

void PageParts::MarkClosed(bool crashed) {
  if (std::exchange(closed, true)) return;
  screencast.Stop();
  boxes.Drop();
  session.connection->FailSession(session.id);
  if (on_dialog_finished) on_dialog_finished(std::move(return_value));
  Tell([&](PageListener& to) { to.OnClosed(crashed); });
  listener = nullptr;
}

}  // namespace testbrowser::engine

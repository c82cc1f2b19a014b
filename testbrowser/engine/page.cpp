#include "engine/page.h"

#include "engine/file_address.h"
#include "engine/page_parts.h"

namespace testbrowser::engine {
namespace {

/// A modal dialog that its window closes, not its script, still gives its return value.
void ReadReturnValue(PageParts& dialog) {
  constexpr std::chrono::milliseconds kLimit(500);
  const Reply value = dialog.session.connection->Request(
      dialog.session.id, "Runtime.evaluate",
      JsonObject().Add("expression", "window.returnValue").Add("returnByValue", true).Take(), kLimit);
  if (!value) return;
  cJSON* result = cJSON_GetObjectItemCaseSensitive(value->get(), "result");
  dialog.return_value.reset(cJSON_DetachItemFromObjectCaseSensitive(result, "value"));
}

}  // namespace

Page::Page(std::unique_ptr<PageParts> parts) : parts_(std::move(parts)) {}
Page::~Page() = default;

void Page::SetListener(PageListener* listener) { parts_->listener = listener; }
bool Page::IsClosed() const { return parts_->closed; }

FrameId Page::MainFrame() const { return parts_->frames.main(); }
bool Page::HasFrame(const FrameId& id) const { return parts_->frames.Find(id) != nullptr; }

std::optional<FrameId> Page::ParentFrame(const FrameId& id) const {
  const auto* frame = parts_->frames.Find(id);
  return frame != nullptr ? frame->parent : std::nullopt;
}

std::vector<FrameId> Page::ChildFrames(const FrameId& id) const {
  const auto* frame = parts_->frames.Find(id);
  return frame != nullptr ? frame->children : std::vector<FrameId>();
}

std::string Page::FrameUrl(const FrameId& id) const {
  const auto* frame = parts_->frames.Find(id);
  return frame != nullptr ? frame->url : "";
}

bool Page::ShowsErrorPage(const FrameId& id) const {
  const auto* frame = parts_->frames.Find(id);
  return frame != nullptr && frame->is_error_page;
}

void Page::Navigate(std::string_view url) { NavigateFrame(MainFrame(), url); }

void Page::NavigateFrame(const FrameId& frame, std::string_view url) {
  if (frame == MainFrame() && url == "about:blank") parts_->unasked_entry.reset();
  parts_->session.Send(
      "Page.navigate", JsonObject().Add("url", ToWindowsAddress(url)).Add("frameId", frame).Take(),
      [this, frame, asked = std::string(url)](Reply reply) {
        const std::string error = reply ? MemberText(reply->get(), "errorText") : reply.error();
        if (error.empty()) return;
        parts_->Tell([&](PageListener& to) { to.OnNavigationFailed(frame, asked, error); });
      });
}

void Page::Reload(bool ignore_cache) {
  parts_->session.Send("Page.reload", JsonObject().Add("ignoreCache", ignore_cache).Take());
}

bool Page::Go(int delta) {
  const Reply history = parts_->session.Request("Page.getNavigationHistory");
  if (!history) return false;
  const int index = static_cast<int>(MemberNumber(history->get(), "currentIndex")) + delta;
  const cJSON* entry = index >= 0 ? cJSON_GetArrayItem(Member(history->get(), "entries"), index) : nullptr;
  if (entry == nullptr) return false;
  const double id = MemberNumber(entry, "id");
  if (id == parts_->unasked_entry) return false;
  parts_->session.Send("Page.navigateToHistoryEntry", JsonObject().Add("entryId", id).Take());
  return true;
}

void Page::Stop() { parts_->session.Send("Page.stopLoading"); }

void Page::Close() {
  if (parts_->closed) return;
  if (parts_->on_dialog_finished) ReadReturnValue(*parts_);
  parts_->RequestClose();
  parts_->MarkClosed(false);
}

}  // namespace testbrowser::engine

// The objects of one page: who is who between COM objects, the agent's numbers and the engine's frames.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <compare>
#include <expected>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "com/owned.h"
#include "dom/arguments.h"
#include "dom/document.h"
#include "engine/page.h"

namespace testbrowser::dom {

class Object;

/// What an object stands for in its page. Equal targets are the same object.
struct Target {
  static constexpr int kWindow = 0;
  static constexpr int kDocument = -1;

  engine::FrameId frame;
  /// The document it belongs to, by the name that the document's agent gave itself; empty for what outlives
  /// documents (a window, the container document).
  std::string token;
  /// One of the above or the agent's number of the object.
  int number = kWindow;
  /// Of a window: the frame whose scripts see it; empty for its own document.
  engine::FrameId viewer;

  auto operator<=>(const Target&) const = default;
};

/// The agent's answer to one call.
struct Reply {
  HRESULT result = E_FAIL;
  engine::JsonPtr answer;

  /// The value answered; null for none.
  const cJSON* value() const { return engine::Member(answer.get(), "v"); }
  std::string token() const { return engine::MemberText(answer.get(), "t"); }
  /// A script's own error: its text, for EXCEPINFO.
  std::string error() const { return engine::MemberText(answer.get(), "error"); }
};

class PageModel : public std::enable_shared_from_this<PageModel> {
 public:
  /// The one model of a page. It lives until Forget, or as long as one of its objects.
  static std::shared_ptr<PageModel> Of(const std::shared_ptr<engine::Page>& page, BrowserSite* site);
  static void Forget(const engine::Page& page);

  explicit PageModel(std::shared_ptr<engine::Page> page) : page_(std::move(page)) {}

  engine::Page& page() const { return *page_; }
  /// Null when there is none (any more).
  BrowserSite* site() const { return site_; }

  /// One call of the agent's function for `member` ("IHTMLElement.click") on the target.
  Reply Call(const Target& target, std::string_view member, engine::JsonPtr arguments);

  /// The object behind an agent's reference, made when there is none yet.
  /// @param from the frame whose agent answered.
  quillmate::com::ComPtr<Object> ObjectOf(const cJSON* reference, const engine::FrameId& from);
  /// A frame's window as seen by the scripts of another frame (`viewer`): the same object for the same two.
  /// No viewer is a document's own view of its window, which IHTMLDocument2::parentWindow gives: another
  /// object than IHTMLWindow2::self, as in MSHTML.
  quillmate::com::ComPtr<Object> WindowOf(const engine::FrameId& frame, const engine::FrameId& viewer);
  /// The document that a frame shows now.
  /// @param viewer whose scripts want it; empty for no restriction.
  /// @return E_ACCESSDENIED when the viewer's document is of another origin, E_FAIL when the frame is gone.
  std::expected<quillmate::com::ComPtr<Object>, HRESULT> DocumentOf(const engine::FrameId& frame,
                                                                    const engine::FrameId& viewer);
  /// A frame's container document: one object, whatever the frame shows.
  quillmate::com::ComPtr<Object> ContainerOf(const engine::FrameId& frame);
  /// The browser object of a frame; for the top frame the site's own.
  quillmate::com::ComPtr<IWebBrowser2> BrowserOf(const engine::FrameId& frame);

  /// The document mode of a document that has answered before; 11 for others.
  int ModeOf(const Target& target) const;

  /// Called by an object that ends: the agent may forget it too (told with the next call).
  void Ended(const Target& target);

 private:
  struct DocumentFacts {
    engine::FrameId frame;
    int mode = 11;
    std::string origin;
    std::vector<int> dropped;
  };

  Reply CallOnce(const Target& target, std::string_view member, engine::JsonPtr arguments);
  std::optional<engine::FrameId> FrameOfToken(const std::string& token);
  std::optional<engine::FrameId> FrameOfElement(const Target& element);
  std::string OriginOf(const engine::FrameId& frame) const;
  void Learn(const engine::FrameId& frame, const Reply& reply);
  engine::JsonPtr TakeDropped(const engine::FrameId& frame);
  quillmate::com::ComPtr<Object> CachedOrNew(const Target& target, std::string_view kind);

  std::shared_ptr<engine::Page> page_;
  BrowserSite* site_ = nullptr;
  std::map<std::string, DocumentFacts> documents_;         // by token; the current document of each frame
  std::map<engine::FrameId, std::string> tokens_;          // of the current documents
  std::map<std::string, engine::FrameId> element_frames_;  // what FRAME and IFRAME elements hold
  std::map<Target, Object*> objects_;                      // not counted: an object leaves it when it ends
};

}  // namespace testbrowser::dom

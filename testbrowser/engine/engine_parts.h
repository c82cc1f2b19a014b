// The browser's side of the engine: which targets are pages, and whose events are whose.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/connection.h"
#include "engine/page_parts.h"

namespace testbrowser::engine {

struct EngineParts : PageHost {
  EngineParts(std::shared_ptr<Connection> browser, std::vector<std::string> page_scripts)
      : connection(std::move(browser)), scripts(std::move(page_scripts)) {}

  struct OpenedPage {
    std::shared_ptr<Page> page;
    PageParts* parts;      ///< the page's own
    std::string opener;    ///< the target of the page whose script or link opened it, when Chromium says so
    bool claimed = false;  ///< somebody owns it
  };

  /// Has every new target stopped before its first script, so that ours come first.
  void Listen();
  /// @return null when Chromium is gone.
  std::shared_ptr<Page> OpenPage(PageListener* listener);
  std::shared_ptr<Page> OpenDialog(PageParts& opener, const cJSON* request,
                                   std::function<void(JsonPtr)> finished) override;
  /// Every page is closed; their listeners are told.
  void EndAll(bool crashed);

 private:
  void HandleEvent(const std::string& session, const std::string& method, const cJSON* params);
  void HandleBrowserEvent(const std::string& method, const cJSON* params);
  void OnAttached(const cJSON* params);
  void OfferPopups();
  void OfferPopup(const OpenedPage& popup);
  void Forget(const std::string& session, bool crashed);
  /// @return null when no page has that target.
  OpenedPage* FindTarget(const std::string& target);
  /// A new page about to show about:blank; null when Chromium is gone.
  OpenedPage* Create();
  /// Lets a page of ours load its about:blank.
  void StartBlank(PageParts& page);

 public:
  std::shared_ptr<Connection> connection;

 private:
  std::vector<std::string> scripts;
  std::map<std::string, OpenedPage> pages;  ///< by session
  int creating = 0;                         ///< an unknown target that appears now may be one of ours
  std::string window_opener;                ///< the session of the page that opened a window last
};

}  // namespace testbrowser::engine

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

struct EngineParts {
  EngineParts(std::shared_ptr<Connection> browser, std::vector<std::string> page_scripts)
      : connection(std::move(browser)), scripts(std::move(page_scripts)) {}

  struct OpenedPage {
    std::shared_ptr<Page> page;
    PageParts* parts;  ///< the page's own
  };

  /// Has every new target stopped before its first script, so that ours come first.
  void Listen();
  std::shared_ptr<Page> OpenPage(PageListener* listener, std::chrono::milliseconds limit);
  /// Every page is closed; their listeners are told.
  void EndAll(bool crashed);

  void HandleEvent(const std::string& session, const std::string& method, const cJSON* params);
  void OnAttached(const cJSON* params);
  void OnTargetInfo(const cJSON* info);
  void Forget(const std::string& session, bool crashed);
  OpenedPage* FindTarget(const std::string& target);

  std::shared_ptr<Connection> connection;
  std::vector<std::string> scripts;
  std::map<std::string, OpenedPage> pages;  ///< by session
  bool opening = false;                     ///< a target that appears now is ours, not a script's
};

}  // namespace testbrowser::engine

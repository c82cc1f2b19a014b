// Chromium as a part of this program: one process with a fresh profile serves every page, and ends with us.
// Everything here belongs to the UI thread, which needs a message loop.
#pragma once

#include <expected>
#include <memory>
#include <string>
#include <vector>

#include "engine/page.h"
#include "engine/page_listener.h"

namespace testbrowser::engine {

struct EngineOptions {
  /// UTF-8 texts run in every frame of every page, in this order, before any script of the page itself.
  std::vector<std::string> scripts;
  /// The folder that downloads come to, a Windows path in UTF-8; empty: they are refused.
  std::string downloads = {};
};

struct EngineParts;

class Engine {
 public:
  /// Starts Chromium and waits for its first answer (about a second).
  /// @return the reason as text when there is no Chromium or it does not answer in time.
  static std::expected<std::unique_ptr<Engine>, std::string> Start(EngineOptions options);
  /// Closes every page (their listeners are told) and ends Chromium.
  ~Engine();

  /// A new page that shows about:blank, with all scripts in it.
  /// @return null when Chromium is gone.
  std::shared_ptr<Page> OpenPage(PageListener* listener);
  bool IsAlive() const;

 private:
  explicit Engine(std::unique_ptr<EngineParts> parts);
  std::unique_ptr<EngineParts> parts_;
};

}  // namespace testbrowser::engine

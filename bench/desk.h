// One page in a test browser, selected for the commands and reachable for the bare loops.
#pragma once

#include <memory>
#include <string>

#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::bench {

class Desk {
 public:
  Desk();

  /// Serves a page.
  /// @param html the page without its doctype, which is the standards one.
  std::string Serve(const std::string& path, const std::string& html);

  /// Shows a page and selects it.
  /// @return its address.
  std::string Show(const std::string& html);

  /// @return the "Internet Explorer_Server" window of the page.
  HWND Page() const { return browser_->Page(); }

 private:
  test::PageServer server_;
  std::unique_ptr<test::Browser> browser_;
  int pages_ = 0;
};

/// Calls a command that must succeed.
/// @throws std::runtime_error with its answer when it fails.
test::Envelope Demand(const char* command, test::Parameters parameters);

}  // namespace quillmate::bench

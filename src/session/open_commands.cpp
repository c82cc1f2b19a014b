// The commands that start a browser or open a page.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "session/commands.h"
#include "session/current_target.h"
#include "session/new_tab.h"
#include "session/page_load.h"
#include "session/start_browser.h"
#include "session/window_size.h"

namespace quillmate::session {
namespace {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words

/// Starts a browser at an address and makes it current.
bool OpenInNewBrowser(std::string_view url) {
  auto browser = StartBrowser();
  if (browser == nullptr || !Navigate(browser.Get(), url, OpenIn::kSameTab)) return false;
  ReplaceTarget(std::make_unique<TabBrowserHolder>(std::move(browser)));
  return true;
}

bool OpenPage(std::string_view url, OpenIn where) {
  const auto* tab = dynamic_cast<const TabBrowserHolder*>(ValidHolder());
  if (tab == nullptr) return OpenInNewBrowser(url);
  if (!tab->Answers()) return false;
  if (where == OpenIn::kSameTab) return Navigate(tab->Browser(), url, where);
  auto opened = OpenNewTab(*tab, url);
  if (opened == nullptr) return false;
  SelectTarget(std::move(opened));
  return true;
}

}  // namespace

Result NewBrowser(const CommandParams&) {
  EnsureTarget();
  if (!OpenInNewBrowser("about:blank")) return Fail(messages::kOpenNewBrowserFailed);
  WaitForPageLoad();
  return Done();
}

Result Open(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!IsTextValue(target)) return Fail(messages::kInvalidParameter);
  if (target.starts_with("file:") && !LocalFileExists(target)) return Fail(messages::kLocalFileMissing);
  const std::string by = params.Get("by");
  if (!by.empty() && by != "_blank") return Fail(messages::kInvalidParameter);
  const bool keep_size = params.Get("resize-max") == "False";

  EnsureTarget();
  if (!OpenPage(target, by.empty() ? OpenIn::kSameTab : OpenIn::kNewTab))
    return Fail(messages::kOpenNewTabFailed);
  WaitForPageLoad();
  if (keep_size) return Done();
  auto sized = SizeCurrentWindow("max");
  if (!sized.success) return sized;
  if (WindowHolder* holder = ValidHolder()) holder->BringToTop();
  return Done();
}

}  // namespace quillmate::session

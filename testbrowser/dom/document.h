// The way into a page's objects for the windows and the browser object that show it.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <memory>
#include <string>
#include <vector>

#include "com/owned.h"
#include "engine/page.h"

namespace testbrowser::dom {

/// Where a page is shown. Implemented by whoever owns the page's window.
class BrowserSite {
 public:
  virtual ~BrowserSite() = default;
  /// The browser object that shows the page, not counted; null for a modal dialog.
  virtual IWebBrowser2* Browser() = 0;
  /// The page's window, of class "Internet Explorer_Server".
  virtual HWND ServerWindow() = 0;
};

/// The scripts of the in-page agent, for EngineOptions::scripts.
std::vector<std::string> AgentScripts();

/// The container document of a page: one object for the page's life, which stands for whatever document the
/// page shows at the moment. The site may go before the page's objects do; say so by ForgetSite.
quillmate::com::ComPtr<IHTMLDocument2> ContainerDocument(std::shared_ptr<engine::Page> page,
                                                         BrowserSite* site);

/// Tells a page's objects that its site is no more.
void ForgetSite(const engine::Page& page);

}  // namespace testbrowser::dom

#include "session/start_browser.h"

#include <windows.h>

#include "com/encoding.h"
#include "com/owned.h"
#include "com/process.h"
#include "session/browser_objects.h"

namespace quillmate {
namespace {

constexpr wchar_t kProgram[] = L"C:\\Program Files\\Internet Explorer\\iexplore.exe";
constexpr std::chrono::milliseconds kStartTime(3000);
constexpr std::chrono::milliseconds kSettleTime(3000);
/// Flags of IWebBrowser2::Navigate2.
constexpr LONG kNoFlags = 0;
constexpr LONG kOpenInNewTab = 0x800;

com::ComPtr<IWebBrowser2> StartByApplicationObject() {
  com::ComPtr<IWebBrowser2> browser;
  if (FAILED(CoCreateInstance(CLSID_InternetExplorer, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&browser))))
    return {};
  return browser;
}

/// Starts iexplore.exe with SW_HIDE; StartBrowser shows the window later.
bool StartProgram() {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  GetStartupInfoW(&startup);
  startup.dwFlags |= STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_HIDE;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessW(kProgram, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started))
    return false;
  const com::UniqueHandle process(started.hProcess);
  const com::UniqueHandle thread(started.hThread);
  WaitForSingleObject(process.get(), static_cast<DWORD>(kStartTime.count()));
  return true;
}

com::ComPtr<IWebBrowser2> StartByProgram() {
  if (!StartProgram()) return {};
  HWND frame = FindWindowW(L"IEFrame", nullptr);
  com::Pause(kSettleTime);
  return GetWebBrowserFromWindow(frame);
}

}  // namespace

com::ComPtr<IWebBrowser2> StartBrowser() {
  HoldTypeLibrary();
  auto browser = StartByApplicationObject();
  if (browser == nullptr) browser = StartByProgram();
  if (browser != nullptr) browser->put_Visible(VARIANT_TRUE);
  return browser;
}

HRESULT NavigateBrowser(IWebBrowser2* browser, std::string_view url, OpenIn where) {
  if (browser == nullptr) return E_POINTER;
  com::Variant target = com::Variant::Text(com::FromAnsi(url));
  com::Variant flags = com::Variant::Int(where == OpenIn::kNewTab ? kOpenInNewTab : kNoFlags);
  com::Variant none;
  VARIANT url_argument = target.get();
  VARIANT flags_argument = flags.get();
  return browser->Navigate2(&url_argument, &flags_argument, none.put(), none.put(), none.put());
}

}  // namespace quillmate

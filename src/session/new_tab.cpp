// New tabs: what is there afterwards and was not there before.
#include "session/new_tab.h"

#include <algorithm>
#include <vector>

#include "com/variant.h"
#include "session/html_window.h"
#include "session/start_browser.h"

namespace quillmate::session {
namespace {

using com::ComPtr;

constexpr int kRounds = 50;
constexpr DWORD kRoundMs = 100;

HWND FrameOf(IWebBrowser2* browser) {
  SHANDLE_PTR handle = 0;
  return SUCCEEDED(browser->get_HWND(&handle)) ? reinterpret_cast<HWND>(handle) : nullptr;
}

/// The browsers of the shell's list that belong to one frame; empty when the list cannot be had.
std::vector<ComPtr<IWebBrowser2>> TabsOfFrame(HWND frame) {
  ComPtr<IShellWindows> windows;
  LONG count = 0;
  if (FAILED(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&windows))) ||
      FAILED(windows->get_Count(&count))) {
    return {};
  }
  std::vector<ComPtr<IWebBrowser2>> tabs;
  for (LONG i = 0; i < count; ++i) {
    ComPtr<IDispatch> item;
    if (FAILED(windows->Item(com::Variant::Int(i).get(), &item))) continue;
    auto browser = com::Query<IWebBrowser2>(item);
    if (browser != nullptr && FrameOf(browser.Get()) == frame) tabs.push_back(std::move(browser));
  }
  return tabs;
}

std::vector<HWND> HostedTabs(HWND frame) {
  std::vector<HWND> tabs;
  for (HWND child = GetWindow(frame, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (IsWindowOfClass(child, L"AtlAxWin100")) tabs.push_back(child);
  }
  return tabs;
}

/// Sends the browser to a new tab and looks again until a tab is there that was not before.
/// @param list gives the tabs as they are now; @param same compares two of them; @param make_holder wraps the
/// new one,
///        and answers null while it has no page yet.
template <class List, class Same, class MakeHolder>
std::unique_ptr<WindowHolder> OpenAndFind(IWebBrowser2* browser, std::string_view url, List list, Same same,
                                          MakeHolder make_holder) {
  const auto before = list();
  if (!Navigate(browser, url, OpenIn::kNewTab)) return {};
  for (int round = 0; round < kRounds; ++round) {
    for (auto& tab : list()) {
      if (std::ranges::any_of(before, [&](const auto& old) { return same(old, tab); })) continue;
      auto holder = make_holder(tab);
      if (holder->IsValid()) return holder;
    }
    Sleep(kRoundMs);
  }
  return {};
}

}  // namespace

std::unique_ptr<WindowHolder> OpenNewTab(const TabBrowserHolder& holder, std::string_view url) {
  if (const auto* hosted = dynamic_cast<const IeBasedTabHolder*>(&holder)) {
    HWND frame = FindAncestorOfClass(hosted->GetWindowHandle(), L"Chrome_WidgetWin_1");
    return OpenAndFind(
        holder.Browser(), url, [=] { return HostedTabs(frame); }, std::equal_to<HWND>(),
        [](HWND tab) { return std::make_unique<IeBasedTabHolder>(tab); });
  }
  HWND frame = holder.GetWindowHandle();
  return OpenAndFind(
      holder.Browser(), url, [=] { return TabsOfFrame(frame); },
      [](const auto& a, const auto& b) { return com::IsSameObject(a.Get(), b.Get()); },
      [](const auto& tab) { return std::make_unique<TabBrowserHolder>(tab); });
}

}  // namespace quillmate::session

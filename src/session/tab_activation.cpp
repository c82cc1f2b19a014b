#include "session/tab_activation.h"

#include <mshtml.h>
#include <oleacc.h>
#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "com/encoding.h"
#include "com/owned.h"
#include "com/process.h"
#include "input/synthesized_input.h"
#include "session/browser_objects.h"
#include "session/windows.h"

namespace quillmate {
namespace {

constexpr int kMaxRounds = 99;
constexpr std::chrono::milliseconds kPauseBetweenRounds(100);
constexpr size_t kMaxChildren = 500;
constexpr LONG kPageTabList = ROLE_SYSTEM_PAGETABLIST;

/// Walks a chain of first children by window class.
HWND FindChain(HWND window, std::initializer_list<const wchar_t*> classes) {
  for (const wchar_t* name : classes) {
    if (window == nullptr) return nullptr;
    window = FindWindowExW(window, nullptr, name, nullptr);
  }
  return window;
}

HWND FindTabStrip(HWND frame) {
  if (HWND strip =
          FindChain(frame, {L"CommandBarClass", L"ReBarWindow32", L"TabBandClass", L"DirectUIHWND"})) {
    return strip;
  }
  return FindChain(frame, {L"WorkerW", L"ReBarWindow32", L"TabBandClass", L"DirectUIHWND"});
}

/// The children that are objects of their own, at most the first 500.
std::vector<com::ComPtr<IAccessible>> ChildrenOf(IAccessible* parent) {
  LONG count = 0;
  if (FAILED(parent->get_accChildCount(&count)) || count <= 0) return {};
  std::vector<com::Variant> slots(std::min(static_cast<size_t>(count), kMaxChildren));
  std::vector<VARIANT> raw(slots.size());
  LONG obtained = 0;
  if (FAILED(AccessibleChildren(parent, 0, static_cast<LONG>(raw.size()), raw.data(), &obtained))) return {};
  std::vector<com::ComPtr<IAccessible>> children;
  for (size_t i = 0; i < static_cast<size_t>(obtained); ++i) {
    *slots[i].put() = raw[i];
    if (slots[i].type() != VT_DISPATCH) continue;
    if (auto child = slots[i].As<IAccessible>()) children.push_back(std::move(child));
  }
  return children;
}

bool IsPageTabList(IAccessible* item) {
  com::Variant role;
  return SUCCEEDED(item->get_accRole(com::Variant::Int(CHILDID_SELF).get(), role.put())) &&
         role.type() == VT_I4 && role.get().lVal == kPageTabList;
}

bool NameBeginsWith(IAccessible* tab, const std::string& caption) {
  com::Bstr name;
  return SUCCEEDED(tab->get_accName(com::Variant::Int(CHILDID_SELF).get(), name.put())) &&
         com::ToAnsi(name.view()).starts_with(caption);
}

bool SelectTab(IAccessible* strip, const std::string& caption) {
  for (const auto& list : ChildrenOf(strip)) {
    if (!IsPageTabList(list.Get())) continue;
    for (const auto& tab : ChildrenOf(list.Get())) {
      if (!NameBeginsWith(tab.Get(), caption)) continue;
      tab->accDoDefaultAction(com::Variant::Int(CHILDID_SELF).get());
      return true;
    }
  }
  return false;
}

bool WindowTextBeginsWith(HWND window, const std::string& caption) {
  return com::ToAnsi(ReadWindowText(window)).starts_with(caption);
}

/// A tab's caption: its document's title; without one, its address without a leading "file://".
/// @return the caption in the ANSI code page; nothing when a call to the browser failed.
std::optional<std::string> ReadTabCaption(IWebBrowser2* browser) {
  com::ComPtr<IDispatch> object;
  if (browser == nullptr || FAILED(browser->get_Document(&object))) return std::nullopt;
  const auto document = com::Query<IHTMLDocument2>(object);
  com::Bstr title;
  if (document == nullptr || FAILED(document->get_title(title.put()))) return std::nullopt;
  if (!title.empty()) return com::ToAnsi(title.view());
  com::Bstr url;
  if (FAILED(document->get_URL(url.put()))) return std::nullopt;
  constexpr std::string_view kFileScheme = "file://";
  std::string caption = com::ToAnsi(url.view());
  return caption.starts_with(kFileScheme) ? caption.substr(kFileScheme.size()) : caption;
}

}  // namespace

bool ActivateIeTab(IWebBrowser2* browser) {
  const auto caption = ReadTabCaption(browser);
  HWND frame = caption ? GetFrameWindow(browser) : nullptr;
  if (frame == nullptr || !BringWindowToFront(frame)) return false;
  HWND window = FindTabStrip(frame);
  com::ComPtr<IAccessible> strip;
  if (window == nullptr ||
      FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                        reinterpret_cast<void**>(strip.GetAddressOf())))) {
    return false;
  }
  return strip != nullptr && SelectTab(strip.Get(), *caption);
}

bool ActivateHostedTab(IWebBrowser2* browser, HWND tab_window) {
  const auto caption = ReadTabCaption(browser);
  HWND frame = caption ? FindAncestorOfClass(tab_window, L"Chrome_WidgetWin_1") : nullptr;
  if (frame == nullptr || !BringWindowToFront(frame)) return false;
  for (int round = 0; round < kMaxRounds; ++round) {
    if (WindowTextBeginsWith(frame, *caption)) return true;
    if (!BringWindowToFront(frame) || !SendKeySequence("{CTRL}{PAGEDOWN}")) return false;
    com::Pause(kPauseBetweenRounds);
  }
  return false;
}

}  // namespace quillmate

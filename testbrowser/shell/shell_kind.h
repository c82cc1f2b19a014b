// The two sorts of browser frame, told apart by nothing but their windows.
#pragma once

#include <array>
#include <string>

namespace testbrowser::shell {

struct ShellKind {
  const wchar_t* frame_class;
  /// The windows of a tab from the frame's child down to the parent of its "Internet Explorer_Server".
  std::array<const wchar_t*, 3> tab_chain;
  /// The window of that chain that the tab's browser object names as its own.
  std::size_t tab_window;
  bool has_tab_strip;
  /// What follows the page's title in the frame's.
  std::wstring title_suffix;
};

/// Internet Explorer's own frame.
inline ShellKind InternetExplorerShell() {
  return {.frame_class = L"IEFrame",
          .tab_chain = {L"Frame Tab", L"TabWindowClass", L"Shell DocObject View"},
          .tab_window = 1,
          .has_tab_strip = true,
          .title_suffix = L" - Internet Explorer"};
}

/// A Chromium-based browser's frame with the engine of Internet Explorer in its tabs. Its title names the profile and
/// the browser, and never Internet Explorer; other browsers' suffixes can be chosen on the command line.
inline ShellKind HostedShell() {
  return {.frame_class = L"Chrome_WidgetWin_1",
          .tab_chain = {L"AtlAxWin100", L"Shell Embedding", L"Shell DocObject View"},
          .tab_window = 1,
          .has_tab_strip = false,
          .title_suffix = L" - Profile 1 - Microsoft\u200B Edge"};
}

}  // namespace testbrowser::shell

// The commands that choose, start, open, size and close windows and tabs, and go back and forth through their pages.
#include <windows.h>
#include <algorithm>
#include <string>

#include "api/messages.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "com/process.h"
#include "commands.h"
#include "locate/current_page.h"
#include "session/find_target.h"
#include "session/session.h"
#include "session/start_browser.h"
#include "session/windows.h"

namespace quillmate {
namespace {

constexpr int kLoadRounds = 5;
constexpr std::chrono::seconds kLoadRound(1);
constexpr int kStartRounds = 25;
constexpr std::chrono::milliseconds kStartRound(20);

/// How far the page-load wait has come with the current surface.
enum class Wait { kOver, kBusy, kSilent };

/// A page that does not answer is busy. To learn that takes as long as a round.
Wait AskLoad(const WindowHolder* holder) {
  if (holder == nullptr) return Wait::kOver;
  if (holder->Ask(kLoadRound) == Response::kSilent) return Wait::kSilent;
  return holder->IsBusy() ? Wait::kBusy : Wait::kOver;
}

/// Waits up to five seconds, in steps of one, until the current surface is gone, invalid or no longer busy.
/// @return false when it is still busy after that.
bool WaitForPageLoad(Session& session) {
  Wait wait = AskLoad(session.ValidHolder());
  for (int round = 0; round < kLoadRounds && wait != Wait::kOver; ++round) {
    if (wait == Wait::kBusy) com::Pause(kLoadRound);
    wait = AskLoad(session.ValidHolder());
  }
  return wait == Wait::kOver;
}

/// Waits up to five seconds for the page that a browser was told to show. At first, for up to half a second,
/// until the browser has begun, or is ready already: when the order returns it may still show the old page
/// and not be busy.
void WaitForNewPage(Session& session) {
  bool has_begun = false;
  com::PollUntil(kStartRounds, kStartRound, [&] {
    const WindowHolder* holder = session.ValidHolder();
    const LoadState state = holder != nullptr ? holder->GetLoadState() : LoadState::kBusy;
    const bool is_ready = has_begun && state == LoadState::kComplete;
    has_begun = has_begun || state == LoadState::kStarting;
    return is_ready || state == LoadState::kBusy;
  });
  WaitForPageLoad(session);
}

bool Maximise(HWND window) {
  ShowWindow(window, SW_MAXIMIZE);
  return IsZoomed(window) != FALSE;
}

/// A window that took another size than asked for (its own smallest one, the screen's) has refused.
bool Resize(HWND window, const CoordinatePair& size) {
  // A minimised window may be restored to a maximised one first.
  for (int round = 0; round < 2 && (IsZoomed(window) || IsIconic(window)); ++round) {
    ShowWindow(window, SW_RESTORE);
  }
  RECT rect = {};
  return SetWindowPos(window, nullptr, 0, 0, size.x, size.y, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE) &&
         GetWindowRect(window, &rect) && rect.right - rect.left == size.x && rect.bottom - rect.top == size.y;
}

/// As long as a call to a busy page may take: its thread can be the frame's, too.
constexpr std::chrono::seconds kFrameLimit(5);

/// Sizes the top-level window of the selected surface.
/// @param change sets the window's size and returns whether the window took it.
template <class Change>
OrFailure<void> SizeWindow(Session& session, Change change) {
  const WindowHolder* holder = session.ValidHolder();
  HWND window = holder != nullptr ? GetAncestor(holder->GetWindowHandle(), GA_ROOT) : nullptr;
  if (window == nullptr) return Failed(messages::kBrowserNotFound);
  const bool responds = AskWindow(window, kFrameLimit) == Response::kAnswers;
  if (!responds || !change(window)) return Failed(messages::kSelectWindowSizeFail);
  return {};
}

/// Asks the file system in the ANSI code page; folders count.
/// @param address begins with "file:"; one shorter than eight bytes names no file.
bool LocalFileExists(const std::string& address) {
  constexpr size_t kSchemeLength = 8;  // "file:///", dropped whatever the bytes are
  if (address.size() < kSchemeLength) return false;
  std::string path = address.substr(kSchemeLength);
  std::ranges::replace(path, '/', '\\');
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Starts a browser at an address and makes it current.
bool OpenInNewBrowser(Session& session, std::string_view url) {
  auto browser = StartBrowser();
  if (browser == nullptr) return false;
  if (FAILED(NavigateBrowser(browser.Get(), url, OpenIn::kSameTab))) {
    browser->Quit();
    return false;
  }
  session.ReplaceTarget(std::make_unique<TabBrowserHolder>(std::move(browser)));
  return true;
}

bool OpenPage(Session& session, std::string_view url, OpenIn where) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr || !holder->IsTab()) return OpenInNewBrowser(session, url);
  if (!holder->Answers()) return false;
  if (where == OpenIn::kSameTab) return holder->Navigate(url);
  auto opened = holder->OpenTab(url);
  if (opened == nullptr) return false;
  session.SelectTarget(std::move(opened));
  return true;
}

/// Finds the surface that "target" names and makes it current.
OrFailure<void> SelectNamedTarget(Session& session, const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!IsWindowLocator(target)) return Failed(messages::kInvalidWindowLocator);
  auto holder = FindTarget(target);
  if (holder == nullptr) return Failed(messages::kBrowserNotFound);
  session.SelectTarget(std::move(holder));
  return {};
}

}  // namespace

Result Refresh(Session& session, const CommandParams&) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr || !holder->Answers()) return Fail(messages::kRefreshFail);
  // Deliberate: a page that is still loading is refused with this message.
  if (holder->IsBusy()) return Fail(messages::kFrameNotFound);
  return holder->Refresh() ? Done() : Fail(messages::kRefreshFail);
}

Result Forward(Session& session, const CommandParams&) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  return holder->GoForward() ? Done() : Fail(messages::kGoForwardFail);
}

Result Back(Session& session, const CommandParams&) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  return holder->GoBack() ? Done() : Fail(messages::kGoBackFail);
}

Result CurrentUrl(Session& session, const CommandParams&) {
  if (session.ValidHolder() == nullptr) return Fail(messages::kBrowserNotFound);
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  com::Bstr url;
  if (FAILED(document->get_URL(url.put())) || url.get() == nullptr) return Fail(messages::kGetUrlFailed);
  // Deliberate: addresses alone are returned in UTF-8.
  return Text(com::ToUtf8(url.view()));
}

Result SelectWindow(Session& session, const CommandParams& params) {
  if (const auto selected = SelectNamedTarget(session, params); !selected) return selected.error();
  // A surface that cannot be brought forward stays selected.
  WindowHolder* holder = session.ValidHolder();
  const bool on_top = holder != nullptr && holder->BringToTop();
  return on_top ? Done() : Fail(messages::kFailedToPlaceTheWebPageToTop);
}

Result SelectWindowUntop(Session& session, const CommandParams& params) {
  if (const auto selected = SelectNamedTarget(session, params); !selected) return selected.error();
  const bool loaded = params.Get("tab-status") != "loading" || WaitForPageLoad(session);
  return loaded ? Done() : Fail(messages::kThePageLoadTimeout);
}

Result SelectWindowSize(Session& session, const CommandParams& params) {
  const std::string size = params.Get("target");
  const auto pair = ParseCoordinatePair(size);
  if (size != "max" && (!pair || pair->x < 0 || pair->y < 0)) return Fail(messages::kSelectWindowSizeFail);
  const auto sized = size == "max" ? SizeWindow(session, Maximise)
                                   : SizeWindow(session, [&](HWND window) { return Resize(window, *pair); });
  return sized ? Done() : Result(sized.error());
}

Result NewBrowser(Session& session, const CommandParams&) {
  session.EnsureTarget();
  if (!OpenInNewBrowser(session, "about:blank")) return Fail(messages::kOpenNewBrowserFailed);
  WaitForNewPage(session);
  return Done();
}

Result Open(Session& session, const CommandParams& params) {
  const auto address = TextValue(params, "target");
  if (!address) return address.error();
  if (address->starts_with("file:") && !LocalFileExists(*address)) return Fail(messages::kLocalFileMissing);
  const std::string by = params.Get("by");
  if (!by.empty() && by != "_blank") return Fail(messages::kInvalidParameter);
  const bool keep_size = params.Get("resize-max") == "False";

  session.EnsureTarget();
  if (!OpenPage(session, *address, by.empty() ? OpenIn::kSameTab : OpenIn::kNewTab))
    return Fail(messages::kOpenNewTabFailed);
  WaitForNewPage(session);
  if (keep_size) return Done();
  if (const auto sized = SizeWindow(session, Maximise); !sized) return sized.error();
  if (WindowHolder* holder = session.ValidHolder()) holder->BringToTop();
  return Done();
}

Result Close(Session& session, const CommandParams& params) {
  const bool others = params.Get("option") == "others";
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  if (!(others ? holder->CloseByKeys() : holder->CloseTab())) return Fail(messages::kCloseFailed);
  // Deliberate: nothing is selected afterwards, even when only the other tabs were closed.
  session.ClearTarget();
  return Done();
}

Result Quit(Session& session, const CommandParams&) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  if (!holder->CloseWindow()) return Fail(messages::kQuitFailed);
  session.ClearTarget();
  return Done();
}

}  // namespace quillmate

// The search over the three kinds of browser window, and its fallback.
#include "session/find_target.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "api/patterns.h"
#include "api/validation.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/document_search.h"
#include "locate/locator_syntax.h"
#include "session/html_window.h"

namespace quillmate::session {
namespace {

using api::Matches;
using api::Pattern;
using com::ComPtr;
using Holder = std::unique_ptr<WindowHolder>;

bool IsText(HRESULT result, const com::Bstr& actual, std::string_view wanted) {
  return SUCCEEDED(result) && actual.view() == com::FromAnsi(wanted);
}

/// Numbers the candidates of one frame and tells which one the locator means.
class Candidates {
 public:
  explicit Candidates(std::string_view locator) : locator_(locator) {}

  /// @param count how many candidates in a row this surface stands for.
  /// @return the holder when it matches; null, and the holder gone, when it does not. A surface without a
  /// document
  ///         never matches and is not counted.
  Holder Try(Holder holder, int count = 1) {
    const auto document = holder->GetDocument();
    if (document == nullptr) return {};
    const int first = std::exchange(next_, next_ + count);
    return Matches(document.Get(), first, next_) ? std::move(holder) : Holder();
  }

 private:
  bool Matches(IHTMLDocument2* document, int first, int end) const {
    const std::string value(locate::ValueOf(locator_));
    com::Bstr text;
    if (api::Matches(Pattern::kIndex, locator_)) {
      const long index = std::strtol(value.c_str(), nullptr, 10);
      return first <= index && index < end;
    }
    if (api::Matches(Pattern::kUrlKey, locator_)) return IsText(document->get_URL(text.put()), text, value);
    if (api::Matches(Pattern::kTitle, locator_)) return IsText(document->get_title(text.put()), text, value);
    return api::IsElementLocator(locator_) &&
           locate::FindElements(document, locator_, locate::Wanted::kFirst).has_value();
  }

  std::string_view locator_;
  int next_ = 0;
};

/// Calls a function with the direct children of a window that have a class, in Z order, until it answers a
/// holder.
template <class Function>
Holder ForEachChild(HWND parent, const wchar_t* class_name, Function function) {
  for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (!IsWindowOfClass(child, class_name)) continue;
    if (Holder found = function(child)) return found;
  }
  return {};
}

Holder TryIeFrame(HWND frame, std::string_view locator) {
  int tabs = 0;
  ForEachChild(frame, L"Frame Tab", [&](HWND) { return ++tabs, Holder(); });
  if (tabs == 0) return {};
  // The tabs drive only the count, on purpose: every candidate has the browser of the frame's first page, so
  // one holder stands for all of them.
  return Candidates(locator).Try(std::make_unique<TabBrowserHolder>(frame), tabs);
}

Holder TryHostingFrame(HWND frame, std::string_view locator) {
  Candidates candidates(locator);
  return ForEachChild(frame, L"AtlAxWin100",
                      [&](HWND tab) { return candidates.Try(std::make_unique<IeBasedTabHolder>(tab)); });
}

Holder TryWindow(HWND window, std::string_view locator) {
  if (IsWindowOfClass(window, L"IEFrame")) return TryIeFrame(window, locator);
  if (IsWindowOfClass(window, L"Chrome_WidgetWin_1")) return TryHostingFrame(window, locator);
  if (IsWindowOfClass(window, L"Internet Explorer_TridentDlgFrame")) {
    return Candidates(locator).Try(std::make_unique<ModalDialogHolder>(window));
  }
  return {};
}

Holder FindInZOrder(HWND parent, std::string_view locator) {
  for (HWND window = GetWindow(parent, GW_CHILD); window != nullptr;
       window = GetWindow(window, GW_HWNDNEXT)) {
    if (auto found = TryWindow(window, locator)) return found;
  }
  return {};
}

/// A handle names the surface that it belongs to, or none: no other surface stands in for it.
Holder FindByHandle(std::string_view number) {
  const bool hexadecimal = number.starts_with("0x") || number.starts_with("0X");
  const auto value = std::strtoull(std::string(number).c_str(), nullptr, hexadecimal ? 16 : 10);
  const auto window = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(value));
  for (HWND ancestor = window; ancestor != nullptr;) {
    Holder holder;
    if (IsWindowOfClass(ancestor, L"Internet Explorer_TridentDlgFrame")) {
      holder = std::make_unique<ModalDialogHolder>(window);
    } else if (IsWindowOfClass(ancestor, L"Frame Tab")) {
      holder = std::make_unique<TabBrowserHolder>(window);
    }
    if (holder != nullptr && holder->IsValid()) return holder;
    HWND parent = GetParent(ancestor);
    ancestor = parent != ancestor ? parent : nullptr;
  }
  return {};
}

Holder FindAmongShellWindows(std::string_view locator) {
  ComPtr<IShellWindows> windows;
  constexpr DWORD kAnyServer =
      CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;
  LONG count = 0;
  if (FAILED(CoCreateInstance(CLSID_ShellWindows, nullptr, kAnyServer, IID_PPV_ARGS(&windows))) ||
      FAILED(windows->get_Count(&count))) {
    return {};
  }
  Candidates candidates(locator);
  for (LONG i = 0; i < count; ++i) {
    ComPtr<IDispatch> item;
    if (FAILED(windows->Item(com::Variant::Int(i).get(), &item))) continue;
    auto browser = com::Query<IWebBrowser2>(item);
    if (browser == nullptr) continue;
    if (auto found = candidates.Try(std::make_unique<TabBrowserHolder>(std::move(browser)))) return found;
  }
  return {};
}

Holder SearchOnce(std::string_view locator) {
  if (Matches(Pattern::kHandle, locator)) return FindByHandle(locate::ValueOf(locator));
  if (auto found = FindInZOrder(GetDesktopWindow(), locator)) return found;
  return FindAmongShellWindows(locator);
}

}  // namespace

Holder FindTarget(std::string_view locator) {
  if (const auto unquoted = locate::Unquote(locator)) {
    if (auto found = SearchOnce(*unquoted)) return found;
  }
  return SearchOnce(locator);
}

}  // namespace quillmate::session

#include "session/find_target.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "api/patterns.h"
#include "api/validation.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "locate/document_search.h"
#include "locate/locator_syntax.h"
#include "session/browser_objects.h"
#include "session/windows.h"

namespace quillmate {
namespace {

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
  /// document never matches and is not counted.
  Holder Try(Holder holder, int count = 1) {
    const auto document = holder->GetDocument();
    if (document == nullptr) return {};
    const int first = std::exchange(next_, next_ + count);
    return IsMeant(document.Get(), first, next_) ? std::move(holder) : Holder();
  }

 private:
  bool IsMeant(IHTMLDocument2* document, int first, int end) const {
    const std::string value(ValueOf(locator_));
    com::Bstr text;
    if (Matches(Pattern::kIndex, locator_)) {
      const long index = std::strtol(value.c_str(), nullptr, 10);
      return first <= index && index < end;
    }
    if (Matches(Pattern::kUrlKey, locator_)) return IsText(document->get_URL(text.put()), text, value);
    if (Matches(Pattern::kTitle, locator_)) return IsText(document->get_title(text.put()), text, value);
    return IsElementLocator(locator_) && FindFirst(document, locator_).has_value();
  }

  std::string_view locator_;
  int next_ = 0;
};

Holder TryIeFrame(HWND frame, std::string_view locator) {
  const auto tabs = static_cast<int>(ChildrenOfClass(frame, L"Frame Tab").size());
  if (tabs == 0) return {};
  // Deliberate: tabs are only counted. Every index resolves to the browser of the frame's first page, so one
  // holder covers them all.
  return Candidates(locator).Try(std::make_unique<TabBrowserHolder>(frame), tabs);
}

Holder TryHostingFrame(HWND frame, std::string_view locator) {
  Candidates candidates(locator);
  for (HWND tab : ChildrenOfClass(frame, L"AtlAxWin100")) {
    if (auto found = candidates.Try(std::make_unique<IeBasedTabHolder>(tab))) return found;
  }
  return {};
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

/// A handle matches only the surface that contains it; there is no fallback.
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

Holder FindAmongShellBrowsers(std::string_view locator) {
  Candidates candidates(locator);
  Holder found;
  ForEachShellBrowser([&](com::ComPtr<IWebBrowser2> browser) {
    found = candidates.Try(std::make_unique<TabBrowserHolder>(std::move(browser)));
    return found != nullptr;
  });
  return found;
}

Holder SearchOnce(std::string_view locator) {
  if (Matches(Pattern::kHandle, locator)) return FindByHandle(ValueOf(locator));
  if (auto found = FindInZOrder(GetDesktopWindow(), locator)) return found;
  return FindAmongShellBrowsers(locator);
}

}  // namespace

Holder FindTarget(std::string_view locator) {
  if (const auto unquoted = Unquote(locator)) {
    if (auto found = SearchOnce(*unquoted)) return found;
  }
  return SearchOnce(locator);
}

}  // namespace quillmate

#include "session/find_target.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "api/validation.h"
#include "com/encoding.h"
#include "com/owned.h"
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

Holder FindInZOrder(std::string_view locator) {
  for (HWND window : TopLevelWindows()) {
    if (auto found = TryWindow(window, locator)) return found;
  }
  return {};
}

/// Climbs from a window through its parents, itself included, until one of them makes a valid holder.
template <class MakeHolder>
Holder FindUpwards(HWND window, MakeHolder make_holder) {
  while (window != nullptr) {
    Holder holder = make_holder(window);
    if (holder != nullptr && holder->IsValid()) return holder;
    HWND parent = GetParent(window);
    window = parent != window ? parent : nullptr;
  }
  return {};
}

/// The surface of a window that is a surface's outermost one or a frame; a frame's is its front tab's.
Holder MakeHolderOf(HWND window) {
  if (IsWindowOfClass(window, L"Internet Explorer_TridentDlgFrame"))
    return std::make_unique<ModalDialogHolder>(window);
  if (IsWindowOfClass(window, L"AtlAxWin100")) return std::make_unique<IeBasedTabHolder>(window);
  if (IsWindowOfClass(window, L"Frame Tab") || IsWindowOfClass(window, L"IEFrame")) {
    return std::make_unique<TabBrowserHolder>(window);
  }
  if (!IsWindowOfClass(window, L"Chrome_WidgetWin_1")) return {};
  const auto tabs = ChildrenOfClass(window, L"AtlAxWin100");
  return tabs.empty() ? Holder() : std::make_unique<IeBasedTabHolder>(tabs.front());
}

/// A handle means the page under its window, when the window is in a tab or a dialog. Every other handle of a
/// browser's window, its page's and its frame's included, means the surface around it.
Holder FindByHandle(std::string_view number) {
  const bool hexadecimal = number.starts_with("0x") || number.starts_with("0X");
  const auto value = std::strtoull(std::string(number).c_str(), nullptr, hexadecimal ? 16 : 10);
  const auto named = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(value));
  const auto make_from_named = [named](HWND ancestor) -> Holder {
    if (IsWindowOfClass(ancestor, L"Internet Explorer_TridentDlgFrame"))
      return std::make_unique<ModalDialogHolder>(named);
    if (IsWindowOfClass(ancestor, L"Frame Tab")) return std::make_unique<TabBrowserHolder>(named);
    return {};
  };
  if (auto found = FindUpwards(named, make_from_named)) return found;
  return FindUpwards(named, MakeHolderOf);
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
  if (auto found = FindInZOrder(locator)) return found;
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

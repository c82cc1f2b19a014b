// The shell's collection of browser windows: one item for every tab of every running test browser. It looks
// at the screen's windows, so a browser that died is out of it at once.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <functional>
#include <vector>

#include "com/owned.h"
#include "dom/com_object.h"
#include "generated/shell_stubs.h"
#include "shell/shell_items.h"

namespace testbrowser::shell {

/// Properties of a frame's window by which its switches reach the collection: not 0 when its tabs are not listed; how
/// many folder windows and empty items are listed beside them.
inline constexpr wchar_t kUnlistedProperty[] = L"testbrowser unlisted";
inline constexpr wchar_t kFoldersProperty[] = L"testbrowser folders";
inline constexpr wchar_t kNullsProperty[] = L"testbrowser nulls";

class ShellWindows : public dom::DispatchObject<IShellWindows, IShellWindowsStub> {
 public:
  /// @param on_gone called when the last reference is released.
  explicit ShellWindows(std::function<void()> on_gone) : on_gone_(std::move(on_gone)) {}
  ~ShellWindows() override { on_gone_(); }

  /// Looks at the windows; Item answers from that view until the next count.
  HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override;
  HRESULT STDMETHODCALLTYPE Item(VARIANT index, IDispatch** item) override;

 private:
  const std::vector<ShellItem>& View();

  std::function<void()> on_gone_;
  std::vector<ShellItem> view_;
  bool has_view_ = false;
};

}  // namespace testbrowser::shell

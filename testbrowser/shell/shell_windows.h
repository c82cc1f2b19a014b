// The shell's collection of browser windows: one item for every tab of every running test browser. It keeps
// no list of its own but looks at the screen's windows, so a browser that died is out of it at once.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <functional>
#include <vector>

#include "com/com_ptr.h"
#include "dom/com_object.h"
#include "generated/shell_stubs.h"

namespace testbrowser::shell {

class ShellWindows : public dom::DispatchObject<IShellWindows, IShellWindowsStub> {
 public:
  /// @param on_gone called when the last reference is released.
  explicit ShellWindows(std::function<void()> on_gone) : on_gone_(std::move(on_gone)) {}
  ~ShellWindows() override { on_gone_(); }

  /// Looks at the windows; Item answers from that view until the next count.
  HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override;
  HRESULT STDMETHODCALLTYPE Item(VARIANT index, IDispatch** item) override;
  HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** enumerator) override;
  HRESULT STDMETHODCALLTYPE Revoke(LONG cookie) override;

 private:
  const std::vector<HWND>& View();

  std::function<void()> on_gone_;
  std::vector<HWND> view_;
  bool has_view_ = false;
};

}  // namespace testbrowser::shell

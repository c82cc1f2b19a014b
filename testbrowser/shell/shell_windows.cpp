#include "shell/shell_windows.h"

namespace testbrowser::shell {

const std::vector<ShellItem>& ShellWindows::View() {
  if (!has_view_) view_ = FindShellItems();
  has_view_ = true;
  return view_;
}

HRESULT ShellWindows::get_Count(LONG* count) {
  if (count == nullptr) return E_POINTER;
  has_view_ = false;
  *count = static_cast<LONG>(View().size());
  return S_OK;
}

HRESULT ShellWindows::Item(VARIANT index, IDispatch** item) {
  if (item == nullptr) return E_POINTER;
  *item = nullptr;
  // A VT_UI4 would be a sort of window, not a place in the list.
  if (index.vt != VT_I4 && index.vt != VT_I2) return E_INVALIDARG;
  const LONG wanted = index.vt == VT_I4 ? index.lVal : index.iVal;
  const auto& view = View();
  if (wanted < 0 || wanted >= static_cast<LONG>(view.size())) return S_FALSE;
  *item = ObjectOf(view[static_cast<std::size_t>(wanted)]).Detach();
  return *item != nullptr ? S_OK : S_FALSE;
}

}  // namespace testbrowser::shell

#include "shell/shell_windows.h"

namespace testbrowser::shell {
namespace {

using quillmate::com::ComPtr;

/// Walks over the windows of one view; tabs that went meanwhile are left out.
class Enumerator : public dom::ComObject<IEnumVARIANTStub> {
 public:
  explicit Enumerator(std::vector<ShellItem> view, std::size_t next = 0)
      : view_(std::move(view)), next_(next) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* items, ULONG* fetched) override {
    ULONG given = 0;
    while (given < wanted && next_ < view_.size()) {
      ComPtr<IDispatch> browser = ObjectOf(view_[next_++]);
      if (browser == nullptr) continue;
      items[given].vt = VT_DISPATCH;
      items[given].pdispVal = browser.Detach();
      ++given;
    }
    if (fetched != nullptr) *fetched = given;
    return given == wanted ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const bool enough = count <= view_.size() - next_;
    next_ = enough ? next_ + count : view_.size();
    return enough ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
    if (copy == nullptr) return E_POINTER;
    *copy = dom::MakeObject<Enumerator>(view_, next_).Detach();
    return S_OK;
  }

 private:
  std::vector<ShellItem> view_;
  std::size_t next_;
};

}  // namespace

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

HRESULT ShellWindows::_NewEnum(IUnknown** enumerator) {
  if (enumerator == nullptr) return E_POINTER;
  *enumerator = dom::MakeObject<Enumerator>(FindShellItems()).Detach();
  return S_OK;
}

HRESULT ShellWindows::Revoke(LONG) { return S_FALSE; }

}  // namespace testbrowser::shell

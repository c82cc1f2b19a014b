#include "shell/tab_strip_accessible.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "com/encoding.h"
#include "com/owned.h"
#include "dom/com_object.h"
#include "engine/call_fate.h"
#include "engine/switches.h"
#include "generated/shell_stubs.h"
#include "shell/frame.h"
#include "shell/navigation_bar.h"
#include "shell/tab.h"

namespace testbrowser::shell {
namespace {

using quillmate::com::Bstr;
using quillmate::com::ComPtr;

/// @return whether the call may go on: it asks a node about itself, and no test wants it to fail.
HRESULT Check(const VARIANT& child) {
  if (const auto failure = engine::TakeCallFailure()) return *failure;
  return child.vt == VT_I4 && child.lVal == CHILDID_SELF ? S_OK : E_INVALIDARG;
}

/// A node of the tree: every child is an object of its own, so a child number other than "self" is refused
/// but where the child itself is asked for.
class Node : public dom::DispatchObject<IAccessible, IAccessibleStub> {
 public:
  explicit Node(Frame& frame, TabStrip& strip) : frame_(frame.weak_from_this()), strip_(strip) {}

  HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
    if (count == nullptr) return E_POINTER;
    if (const auto failure = engine::TakeCallFailure()) return *failure;
    *count = static_cast<long>(ChildCount());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT number, IDispatch** child) override {
    if (child == nullptr) return E_POINTER;
    *child = nullptr;
    const engine::CallFate fate = engine::TakeCallFate();
    if (const auto failure = engine::FailureOf(fate)) return *failure;
    if (fate == engine::CallFate::kNull) return S_FALSE;
    if (number.vt != VT_I4 || number.lVal < 0 || number.lVal > static_cast<LONG>(ChildCount())) {
      return E_INVALIDARG;
    }
    if (number.lVal == CHILDID_SELF)
      return QueryInterface(__uuidof(IDispatch), reinterpret_cast<void**>(child));
    *child = Child(static_cast<std::size_t>(number.lVal) - 1).Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
    if (const HRESULT checked = Check(child); FAILED(checked)) return checked;
    role->vt = VT_I4;
    role->lVal = Role();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
    if (const HRESULT checked = Check(child); FAILED(checked)) return checked;
    state->vt = VT_I4;
    state->lVal = State();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
    const HRESULT checked = Check(child);
    return SUCCEEDED(checked) ? Give(Name(), name) : checked;
  }
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override {
    const HRESULT checked = Check(child);
    return SUCCEEDED(checked) ? Give(Description(), description) : checked;
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
    const HRESULT checked = Check(child);
    return SUCCEEDED(checked) ? DoDefaultAction() : checked;
  }
  HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                        VARIANT child) override {
    const auto frame = frame_.lock();
    if (FAILED(Check(child)) || frame == nullptr) return E_INVALIDARG;
    RECT place = Place();
    MapWindowPoints(strip_.hwnd(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    *left = place.left;
    *top = place.top;
    *width = place.right - place.left;
    *height = place.bottom - place.top;
    return S_OK;
  }

 protected:
  virtual long Role() const = 0;
  virtual long State() const { return 0; }
  virtual std::wstring Name() const { return {}; }
  virtual std::wstring Description() const { return {}; }
  virtual std::size_t ChildCount() const { return 0; }
  virtual ComPtr<IDispatch> Child(std::size_t) const { return {}; }
  virtual HRESULT DoDefaultAction() { return DISP_E_MEMBERNOTFOUND; }
  virtual RECT Place() const { return ClientRect(strip_.hwnd()); }

  /// Null once the frame is gone; the strip goes with it.
  std::shared_ptr<Frame> frame() const { return frame_.lock(); }
  TabStrip& strip() const { return strip_; }
  template <class Class, class... Arguments>
  ComPtr<IDispatch> Make(Arguments... arguments) const {
    const auto frame = frame_.lock();
    if (frame == nullptr) return {};
    return quillmate::com::Query<IDispatch>(dom::MakeObject<Class>(*frame, strip_, arguments...).Get());
  }

 private:
  static HRESULT Give(const std::wstring& text, BSTR* out) {
    if (out == nullptr) return E_POINTER;
    *out = text.empty() ? nullptr : Bstr(text).release();
    return text.empty() ? S_FALSE : S_OK;
  }

  std::weak_ptr<Frame> frame_;
  TabStrip& strip_;
};

class TabNode : public Node {
 public:
  TabNode(Frame& frame, TabStrip& strip, const Tab* tab) : Node(frame, strip), tab_(tab) {}

 protected:
  long Role() const override { return ROLE_SYSTEM_PAGETAB; }
  long State() const override {
    const auto owner = frame();
    const bool active = owner != nullptr && owner->active() == tab_;
    return STATE_SYSTEM_SELECTABLE | (active ? STATE_SYSTEM_SELECTED : 0);
  }
  std::wstring Name() const override {
    if (!Index()) return {};
    return tab_->Caption() + quillmate::com::FromUtf8(engine::SwitchText("tab-name-suffix"));
  }
  std::wstring Description() const override {
    return Index() ? tab_->Caption() + L"\n" + tab_->Address() : L"";
  }
  HRESULT DoDefaultAction() override {
    const auto index = Index();
    if (!index) return E_FAIL;
    const auto owner = frame();
    owner->Activate(*owner->tabs()[*index]);
    return S_OK;
  }
  RECT Place() const override { return strip().ItemPlace(Index().value_or(0)); }

 private:
  /// The tab's place among the frame's; nothing once it is closed, when tab_ must not be used.
  std::optional<std::size_t> Index() const {
    const auto owner = frame();
    if (owner == nullptr) return std::nullopt;
    const auto found = std::ranges::find(owner->tabs(), tab_, &std::unique_ptr<Tab>::get);
    if (found == owner->tabs().end()) return std::nullopt;
    return static_cast<std::size_t>(found - owner->tabs().begin());
  }

  const Tab* tab_;
};

class NewTabNode : public Node {
 public:
  using Node::Node;

 protected:
  long Role() const override { return ROLE_SYSTEM_PUSHBUTTON; }
  std::wstring Name() const override { return L"New Tab"; }
  HRESULT DoDefaultAction() override {
    const auto owner = frame();
    if (owner == nullptr) return E_FAIL;
    owner->AddBlankTab();
    return S_OK;
  }
  RECT Place() const override {
    const auto owner = frame();
    return strip().ItemPlace(owner != nullptr ? owner->tabs().size() : 0);
  }
};

class TabRowNode : public Node {
 public:
  using Node::Node;

 protected:
  long Role() const override { return ROLE_SYSTEM_PAGETABLIST; }
  std::wstring Name() const override { return L"Tab Row"; }
  std::size_t ChildCount() const override {
    const auto owner = frame();
    return owner != nullptr ? owner->tabs().size() + 1 : 0;
  }
  ComPtr<IDispatch> Child(std::size_t index) const override {
    const auto owner = frame();
    if (owner == nullptr) return {};
    return index < owner->tabs().size() ? Make<TabNode>(owner->tabs()[index].get()) : Make<NewTabNode>();
  }
};

class StripNode : public Node {
 public:
  using Node::Node;

 protected:
  long Role() const override { return ROLE_SYSTEM_CLIENT; }
  std::size_t ChildCount() const override { return 1; }
  ComPtr<IDispatch> Child(std::size_t) const override { return Make<TabRowNode>(); }
};

}  // namespace

ComPtr<IAccessible> MakeTabStripAccessible(Frame& frame, TabStrip& strip) {
  return quillmate::com::Query<IAccessible>(dom::MakeObject<StripNode>(frame, strip).Get());
}

}  // namespace testbrowser::shell

// What every COM object of the browser shares: reference counting, QueryInterface over the interfaces of its
// stubs, and IDispatch by the registered type library. All objects live on the UI thread.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <algorithm>
#include <iterator>
#include <utility>

#include "com/owned.h"
#include "dom/type_libraries.h"

namespace testbrowser::dom {

/// IUnknown for a class that derives from stubs (see generator/stubs.py). It answers to each stub's interface
/// and the interfaces that this one derives from; the first stub is the object's identity. A new object has
/// no reference: make it by MakeObject.
template <class First, class... Others>
class ComObject : public First, public Others... {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;
  virtual ~ComObject() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = iid == __uuidof(IUnknown) ? static_cast<First*>(this) : FindInterface(iid);
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

 private:
  void* FindInterface(REFIID iid) {
    void* found = nullptr;
    const auto try_stub = [&]<class Stub>() {
      const bool has = std::ranges::any_of(Stub::kInterfaces, [&](const IID* own) { return *own == iid; });
      if (found == nullptr && has) found = static_cast<Stub*>(this);
    };
    try_stub.template operator()<First>();
    (try_stub.template operator()<Others>(), ...);
    return found;
  }

  LONG references_ = 0;
};

/// IDispatch as well, for the members of `Default`, the interface that late-bound callers see. The first
/// stub's interface must derive from IDispatch.
template <class Default, class First, class... Others>
class DispatchObject : public ComObject<First, Others...> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    return ComObject<First, Others...>::QueryInterface(
        iid == __uuidof(IDispatch) ? *First::kInterfaces[0] : iid, out);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = index == 0 ? TypeInfoOf(__uuidof(Default)) : nullptr;
    if (*info == nullptr) return DISP_E_BADINDEX;
    (*info)->AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    ITypeInfo* info = TypeInfoOf(__uuidof(Default));
    return info != nullptr ? info->GetIDsOfNames(names, count, ids) : DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) override {
    ITypeInfo* info = TypeInfoOf(__uuidof(Default));
    if (info == nullptr) return DISP_E_MEMBERNOTFOUND;
    // The object may lose its last reference while the call runs.
    const quillmate::com::ComPtr<First> alive(this);
    return info->Invoke(static_cast<Default*>(this), member, flags, parameters, result, exception,
                        bad_argument);
  }
};

/// A new object, held.
template <class Class, class... Arguments>
quillmate::com::ComPtr<Class> MakeObject(Arguments&&... arguments) {
  return quillmate::com::ComPtr<Class>(new Class(std::forward<Arguments>(arguments)...));
}

}  // namespace testbrowser::dom

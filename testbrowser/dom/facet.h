// The frame of the generated facets: IUnknown and IDispatch are the owner's, every method is handed to it by
// name.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "dom/arguments.h"
#include "dom/facet_type.h"
#include "dom/object.h"
#include "engine/call_fate.h"

namespace testbrowser::dom {

template <class Base>
class Facet : public Base, public FacetBase {
 public:
  using FacetBase::FacetBase;
  void* Interface() override { return static_cast<Base*>(this); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    return owner().QueryInterface(iid, out);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return owner().AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return owner().Release(); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return owner().GetTypeInfoCount(count); }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return owner().GetTypeInfo(index, locale, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return owner().GetIDsOfNames(iid, names, count, locale, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) override {
    return owner().Invoke(member, iid, locale, flags, parameters, result, exception, bad_argument);
  }

 protected:
  HRESULT Forward(std::string_view member, const std::vector<Argument>& arguments, ResultPlace result) {
    const engine::CallFate fate = engine::TakeCallFate();
    if (const auto failure = engine::FailureOf(fate)) return *failure;
    if (fate == engine::CallFate::kNull && result.IsObject()) return result.Clear();
    return owner().Forward(member, arguments, result);
  }
};

template <class Type>
std::unique_ptr<FacetBase> MakeFacet(Object& owner) {
  return std::make_unique<Type>(owner);
}

}  // namespace testbrowser::dom

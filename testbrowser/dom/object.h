// A COM object that stands for one object of a page. It has no state of the page's: every call goes to the
// in-page agent, which holds the object under a number for as long as this one lives.
#pragma once

#include <windows.h>
#include <dispex.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "com/owned.h"
#include "dom/arguments.h"
#include "dom/facet_type.h"
#include "dom/object_kind.h"
#include "dom/page_model.h"

namespace testbrowser::dom {

struct TypedMember;

class Object : public IDispatchEx {
 public:
  Object(std::shared_ptr<PageModel> model, Target target, const ObjectKind& kind);
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  PageModel& model() const { return *model_; }
  const Target& target() const { return target_; }

  /// The object as the agent's reference to it.
  engine::JsonPtr Reference() const;

  /// Writes a value that the agent answered to a call of this object.
  HRESULT PutValue(const cJSON* value, ResultPlace place);

  /// Answers a method of one of the facets.
  virtual HRESULT Forward(std::string_view member, const std::vector<Argument>& arguments,
                          ResultPlace result);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) override;

  HRESULT STDMETHODCALLTYPE GetDispID(BSTR name, DWORD flags, DISPID* id) override;
  HRESULT STDMETHODCALLTYPE InvokeEx(DISPID member, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception,
                                     IServiceProvider* caller) override;
  HRESULT STDMETHODCALLTYPE DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

 protected:
  virtual ~Object();
  /// Interfaces that are no facets.
  /// @return the interface, without a reference of its own, or null.
  virtual void* OtherInterface(REFIID) { return nullptr; }

 private:
  FacetBase& FacetFor(const FacetType& type);
  const FacetType* FacetWith(REFIID iid) const;
  std::vector<const FacetType*> Facets() const;
  bool HasOwnNumbers() const;
  DISPID TypedNumber(DISPID member) const;
  HRESULT InvokeScript(std::wstring_view name, WORD flags, const DISPPARAMS& parameters, VARIANT* result,
                       EXCEPINFO* exception);

  LONG references_ = 0;
  std::shared_ptr<PageModel> model_;
  Target target_;
  const ObjectKind& kind_;
  std::map<const FacetType*, std::unique_ptr<FacetBase>> facets_;
};

}  // namespace testbrowser::dom

// QueryInterface with this id tells an object of ours from any other: see Reference.
__CRT_UUID_DECL(testbrowser::dom::Object, 0x7b0f5a7e, 0x52a5, 0x4b0e, 0x9a, 0x55, 0x0f, 0x2f, 0x3c, 0x1f,
                0x6f, 0x10)

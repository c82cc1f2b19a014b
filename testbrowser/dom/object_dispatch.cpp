// Late binding: members of the type library go through the interfaces, all others to the page's script
// object.
#include <algorithm>

#include "com/encoding.h"
#include "com/owned.h"
#include "dom/member_names.h"
#include "dom/object.h"
#include "dom/type_libraries.h"
#include "dom/typed_members.h"
#include "engine/call_fate.h"

namespace testbrowser::dom {
namespace {

using quillmate::com::Bstr;
using quillmate::com::ComPtr;
using quillmate::com::ToUtf8;

void FillException(const Reply& reply, EXCEPINFO* exception) {
  if (exception == nullptr) return;
  *exception = {};
  exception->scode =
      static_cast<SCODE>(static_cast<unsigned>(engine::MemberNumber(reply.answer.get(), "scode")));
  exception->bstrSource = Bstr(L"Microsoft JScript runtime error").release();
  exception->bstrDescription = Bstr(quillmate::com::FromUtf8(reply.error())).release();
}

// The call's arguments in their order; a caller passes them backwards.
std::vector<Argument> ScriptArguments(std::wstring_view name, WORD flags, const DISPPARAMS& parameters) {
  std::vector<Argument> arguments = {name, static_cast<double>(flags)};
  for (UINT i = parameters.cArgs; i-- > 0;) {
    const bool is_this = i < parameters.cNamedArgs && parameters.rgdispidNamedArgs[i] == DISPID_THIS;
    if (!is_this) arguments.emplace_back(static_cast<const VARIANT*>(&parameters.rgvarg[i]));
  }
  return arguments;
}

// MSHTML lets a property be read as if it were a method; the type library's own invocation does not.
WORD AsDeclared(const TypedMember& member, WORD flags) {
  const bool is_property = (member.kinds & INVOKE_FUNC) == 0;
  return is_property && flags == DISPATCH_METHOD ? DISPATCH_PROPERTYGET : flags;
}

}  // namespace

HRESULT Object::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = kind_.facets.empty() ? 0 : 1;
  return S_OK;
}

HRESULT Object::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0 || kind_.facets.empty()) return DISP_E_BADINDEX;
  ComPtr<ITypeInfo> own = TypeInfoOf(*kind_.facets.front()->ids.front());
  *info = own.Detach();
  return *info != nullptr ? S_OK : E_FAIL;
}

std::vector<const FacetType*> Object::Facets() const {
  std::vector<const FacetType*> facets = kind_.facets;
  if (model_->ModeOf(target_) >= 9)
    facets.insert(facets.end(), kind_.modern_facets.begin(), kind_.modern_facets.end());
  return facets;
}

HRESULT Object::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const Bstr name{std::wstring_view(names[0])};
  return GetDispID(name.get(), fdexNameCaseInsensitive, ids);
}

HRESULT Object::GetDispID(BSTR name, DWORD flags, DISPID* id) {
  if (name == nullptr || id == nullptr) return E_POINTER;
  *id = DISPID_UNKNOWN;
  if (const auto failure = engine::TakeCallFailure()) return *failure;
  const bool case_sensitive = (flags & fdexNameCaseInsensitive) == 0;
  for (const FacetType* type : Facets()) {
    *id = FindTypedMember(*type, name);
    if (*id == DISPID_UNKNOWN) continue;
    if (HasOwnNumbers()) *id = OwnNumberOf(kind_.name, *id);
    return S_OK;
  }
  const Reply reply = model_->Call(target_, "Script.find", EncodeArguments({TextOf(name), case_sensitive}));
  if (FAILED(reply.result)) return reply.result;
  if (!cJSON_IsString(reply.value())) return DISP_E_UNKNOWNNAME;
  *id = NumberOfName(quillmate::com::FromUtf8(cJSON_GetStringValue(reply.value())));
  return S_OK;
}

// From mode 9 on each type of element numbers its members anew: a caller that goes by the type library's
// constants finds nothing.
bool Object::HasOwnNumbers() const {
  return kind_.name.starts_with("element") && model_->ModeOf(target_) >= 9;
}

DISPID Object::TypedNumber(DISPID member) const {
  if (!HasOwnNumbers() || member == DISPID_VALUE || member == DISPID_NEWENUM) return member;
  return TypedNumberOf(kind_.name, member).value_or(DISPID_UNKNOWN);
}

HRESULT Object::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                       EXCEPINFO* exception, UINT* bad_argument) {
  if (parameters == nullptr) return E_INVALIDARG;
  if (result != nullptr) VariantInit(result);
  const ComPtr<Object> alive(this);
  if (const auto name = NameOfNumber(member))
    return InvokeScript(*name, flags, *parameters, result, exception);
  const DISPID typed = TypedNumber(member);
  for (const FacetType* type : Facets()) {
    const auto& members = TypedMembers(*type);
    const auto found = members.find(typed);
    if (found == members.end()) continue;
    return found->second.info->Invoke(FacetFor(*type).Interface(), typed, AsDeclared(found->second, flags),
                                      parameters, result, exception, bad_argument);
  }
  return member == DISPID_VALUE ? InvokeScript({}, flags, *parameters, result, exception)
                                : DISP_E_MEMBERNOTFOUND;
}

HRESULT Object::InvokeEx(DISPID member, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                         EXCEPINFO* exception, IServiceProvider*) {
  return Invoke(member, IID_NULL, locale, flags, parameters, result, exception, nullptr);
}

HRESULT Object::InvokeScript(std::wstring_view name, WORD flags, const DISPPARAMS& parameters,
                             VARIANT* result, EXCEPINFO* exception) {
  if (const auto failure = engine::TakeCallFailure()) return *failure;
  auto arguments = EncodeArguments(ScriptArguments(name, flags, parameters));
  if (arguments == nullptr) return DISP_E_TYPEMISMATCH;
  const Reply reply = model_->Call(target_, "Script.invoke", std::move(arguments));
  if (reply.result == DISP_E_EXCEPTION) FillException(reply, exception);
  if (FAILED(reply.result)) return reply.result;
  return result != nullptr ? PutValue(reply.value(), ResultPlace(result)) : S_OK;
}

}  // namespace testbrowser::dom

// Evaluation through the window's "eval".
#include "dom/script.h"

#include <dispex.h>

#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/encoding.h"
#include "com/variant.h"

namespace quillmate::dom {
namespace {

using com::ComPtr;

/// The locale of the call: the system's default, as 1024 says.
constexpr LCID kLocale = 1024;

std::optional<DISPID> FindEval(IDispatchEx* window) {
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(window->GetDispID(com::Bstr(L"eval").get(), fdexNameCaseSensitive, &id))) return std::nullopt;
  return id;
}

/// A page of document mode 9 or later, and one that has run no script yet, shows no "eval" from outside until
/// a script has put it there.
void ProvideEval(IHTMLWindow2* window) {
  com::Variant nothing;
  window->execScript(com::Bstr(L"window.eval = eval").get(), com::Bstr(L"JScript").get(), nothing.put());
}

std::optional<std::string> ToText(const com::Variant& value) {
  if (value.type() == VT_EMPTY || value.type() == VT_NULL) return std::string();
  if (value.type() == VT_BOOL) return value.get().boolVal != VARIANT_FALSE ? "true" : "false";
  const auto text = value.ToText();
  if (!text) return std::nullopt;
  return com::ToAnsi(text->view());
}

}  // namespace

std::optional<std::string> EvaluateScript(IHTMLWindow2* window, std::string_view script) {
  const auto dispatch = com::Query<IDispatchEx>(window);
  if (dispatch == nullptr) return std::nullopt;
  auto eval = FindEval(dispatch.Get());
  if (!eval) {
    ProvideEval(window);
    eval = FindEval(dispatch.Get());
  }
  if (!eval) return std::nullopt;
  const com::Variant code = com::Variant::Text(com::FromAnsi(script));
  VARIANT argument = code.get();
  DISPPARAMS arguments = {&argument, nullptr, 1, 0};
  com::Variant value;
  if (FAILED(dispatch->Invoke(*eval, IID_NULL, kLocale, DISPATCH_METHOD, &arguments, value.put(), nullptr,
                              nullptr))) {
    return std::nullopt;
  }
  return ToText(value);
}

}  // namespace quillmate::dom

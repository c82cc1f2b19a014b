#include "dom/script.h"

#include <dispex.h>
#include <cwchar>
#include <iterator>

#include "com/bstr.h"
#include "com/call_failure.h"
#include "com/com_ptr.h"
#include "com/encoding.h"
#include "com/variant.h"

namespace quillmate {
namespace {

/// The locale of the call: the user's default.
constexpr LCID kLocale = 1024;
constexpr HRESULT kScriptReported = static_cast<HRESULT>(0x80020101);

/// A way to the page's own evaluation: a member of the window, and a script that puts it there.
struct Way {
  const wchar_t* member;
  const wchar_t* preparation;
};

/// Tried in this order until one runs the script. Below document mode 9 the window shows "eval" as soon as
/// the page has run a script. From then on it does so only where a script has assigned it, if at all; a
/// function under a name of our own is visible everywhere, and evaluates in the page's global scope.
constexpr Way kWays[] = {
    {L"eval", nullptr},
    {L"eval", L"window.eval = eval"},
    {L"quillmateEvaluate", L"window.quillmateEvaluate = function (code) { return (0, eval)(code) }"},
};

/// What a failed call tells of the script's error.
class ErrorReport {
 public:
  ErrorReport() = default;
  ErrorReport(const ErrorReport&) = delete;
  ErrorReport& operator=(const ErrorReport&) = delete;
  ~ErrorReport() { Clear(); }

  EXCEPINFO* put() {
    Clear();
    return &info_;
  }

  /// The page's own words where it gives any, else the code.
  std::wstring Text(HRESULT result) const {
    if (SysStringLen(info_.bstrDescription) != 0) return info_.bstrDescription;
    wchar_t code[20] = L"";
    std::swprintf(code, std::size(code), L"0x%08lX",
                  static_cast<unsigned long>(info_.scode != 0 ? info_.scode : result));
    return code;
  }

 private:
  void Clear() {
    for (const BSTR text : {info_.bstrSource, info_.bstrDescription, info_.bstrHelpFile}) SysFreeString(text);
    info_ = {};
  }

  EXCEPINFO info_{};
};

/// Whether a failed call has not run the script, so that another way may. A script's own error, and a call
/// that may have been lost on its way, are final: no script runs twice.
bool MayTryAnotherWay(HRESULT result) {
  return result != DISP_E_EXCEPTION && result != kScriptReported && !com::FailedInTransit(result);
}

HRESULT Prepare(IHTMLWindow2* window, const wchar_t* preparation) {
  com::Variant nothing;
  const HRESULT result =
      window->execScript(com::Bstr(preparation).get(), com::Bstr(L"JScript").get(), nothing.put());
  return SUCCEEDED(result) || com::FailedInTransit(result) ? result : DISP_E_UNKNOWNNAME;
}

HRESULT TryWay(const Way& way, IHTMLWindow2* window, IDispatchEx* members, const com::Variant& code,
               com::Variant& value, ErrorReport& error) {
  HRESULT result = way.preparation != nullptr ? Prepare(window, way.preparation) : S_OK;
  DISPID member = DISPID_UNKNOWN;
  if (SUCCEEDED(result))
    result = members->GetDispID(com::Bstr(way.member).get(), fdexNameCaseSensitive, &member);
  if (FAILED(result)) return result;
  VARIANT argument = code.get();
  DISPPARAMS arguments = {&argument, nullptr, 1, 0};
  return members->Invoke(member, IID_NULL, kLocale, DISPATCH_METHOD, &arguments, value.put(), error.put(),
                         nullptr);
}

/// Never nothing: the script has run, and a host that reads a failure would run it again.
std::string ToText(const com::Variant& value) {
  if (value.type() == VT_EMPTY || value.type() == VT_NULL) return {};
  if (value.type() == VT_BOOL) return value.get().boolVal != VARIANT_FALSE ? "true" : "false";
  const auto text = value.ToText();
  return text ? com::ToAnsi(text->view()) : "[object]";
}

}  // namespace

std::optional<std::string> EvaluateScript(IHTMLWindow2* window, std::string_view script) {
  const auto members = com::Query<IDispatchEx>(window);
  if (members == nullptr) return std::nullopt;
  const com::Variant code = com::Variant::Text(com::FromAnsi(script));
  com::Variant value;
  ErrorReport error;
  HRESULT result = DISP_E_UNKNOWNNAME;
  for (const Way& way : kWays) {
    result = TryWay(way, window, members.Get(), code, value, error);
    if (SUCCEEDED(result)) return ToText(value);
    if (!MayTryAnotherWay(result)) break;
  }
  OutputDebugStringW((L"Execute script failed: " + error.Text(result) + L"\r\n").c_str());
  return std::nullopt;
}

}  // namespace quillmate

// The commands that read the page: texts, attributes, cookies, source, a script's value.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/encoding.h"
#include "dom/commands.h"
#include "dom/worker_call.h"
#include "locate/attribute_text.h"
#include "locate/element_search.h"
#include "locate/frames.h"
#include "session/current_target.h"

namespace quillmate::dom {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words
using com::ComPtr;

Result GetText(const CommandParams& params) {
  const auto element = locate::ResolveTargetElement(params);
  if (!element) return element.error();
  com::Bstr text;
  if (FAILED((*element)->get_innerText(text.put()))) return Fail(messages::kGetTextFailed);
  return Text(com::ToAnsi(text.view()));
}

Result GetAttribute(const CommandParams& params) {
  const std::string name = params.Get("value");
  const std::string target = params.Get("target");
  if (!IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  if (!IsTextValue(name)) return Fail(messages::kInvalidParameter);
  const auto element = locate::FindElement(target);
  if (!element) return Fail(messages::kElementNotFound);
  auto text = locate::ReadWrittenAttribute(element->Get(), name);
  return text ? Text(std::move(*text)) : Fail(messages::kGetAttributeFailed);
}

Result ExecuteScript(const CommandParams& params) {
  std::string script = params.Get("value");
  if (!IsTextValue(script)) return Fail(messages::kInvalidParameter);
  auto document = locate::GetFrameDocument();
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  ComPtr<IHTMLWindow2> window;
  if (FAILED(document->get_parentWindow(&window)) || window == nullptr) {
    return Fail(messages::kGetParentWindowFailed);
  }
  // Given back while the page still answers.
  document.Reset();
  return RunScriptOnWorker(std::move(window), std::move(script));
}

Result PageSource(const CommandParams&) {
  const auto document = com::Query<IHTMLDocument3>(locate::GetFrameDocument());
  ComPtr<IHTMLElement> root;
  com::Bstr source;
  if (document == nullptr || FAILED(document->get_documentElement(&root)) || root == nullptr ||
      FAILED(root->get_outerHTML(source.put()))) {
    return Fail(messages::kFrameNotFound);
  }
  return Text(com::ToAnsi(source.view()));
}

Result GetCookie(const CommandParams&) {
  if (session::ValidHolder() == nullptr) return Fail(messages::kFrameNotFound);
  const auto document = locate::GetFrameDocument();
  if (document == nullptr) return Fail(messages::kCurrentIETabIsNULL);
  com::Bstr cookie;
  if (FAILED(document->get_cookie(cookie.put()))) return Fail(messages::kGetCookieFailed);
  return Structured(JsonPtr(cJSON_CreateString(com::ToAnsi(cookie.view()).c_str())));
}

}  // namespace quillmate::dom

// The commands that read the page: texts, attributes, cookies, source, a script's value.
#include <string>
#include <utility>

#include "api/messages.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "commands.h"
#include "dom/worker_calls.h"
#include "locate/attribute_text.h"
#include "locate/current_page.h"
#include "locate/frames.h"

namespace quillmate {

Result GetText(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  com::Bstr text;
  if (FAILED((*element)->get_innerText(text.put()))) return Fail(messages::kGetTextFailed);
  return Text(com::ToAnsi(text.view()));
}

Result GetAttribute(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto name = TextValue(params);
  if (!name) return name.error();
  const auto element = FindElement(session, *target);
  if (!element) return Fail(messages::kElementNotFound);
  auto text = ReadWrittenAttribute(element->Get(), *name);
  return text ? Text(std::move(*text)) : Fail(messages::kGetAttributeFailed);
}

Result ExecuteScript(Session& session, const CommandParams& params) {
  auto script = TextValue(params);
  if (!script) return script.error();
  auto document = GetFrameDocument(session);
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  auto window = GetParentWindow(document.Get());
  if (window == nullptr) return Fail(messages::kGetParentWindowFailed);
  // Released while the page still responds.
  document.Reset();
  auto value = RunScriptOnWorker(session, std::move(window), std::move(*script));
  if (!value) return value.error();
  // Deliberate: a script that has not returned is a success. The page may show a dialog that the host can
  // answer.
  return *value ? Text(std::move(**value)) : Number(0);
}

Result PageSource(Session& session, const CommandParams&) {
  const auto document = com::Query<IHTMLDocument3>(GetFrameDocument(session));
  com::ComPtr<IHTMLElement> root;
  com::Bstr source;
  if (document == nullptr || FAILED(document->get_documentElement(&root)) || root == nullptr ||
      FAILED(root->get_outerHTML(source.put()))) {
    return Fail(messages::kFrameNotFound);
  }
  return Text(com::ToAnsi(source.view()));
}

Result GetCookie(Session& session, const CommandParams&) {
  if (session.ValidHolder() == nullptr) return Fail(messages::kFrameNotFound);
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Fail(messages::kCurrentIETabIsNULL);
  com::Bstr cookie;
  if (FAILED(document->get_cookie(cookie.put()))) return Fail(messages::kGetCookieFailed);
  return Structured(com::JsonPtr(cJSON_CreateString(com::ToAnsi(cookie.view()).c_str())));
}

}  // namespace quillmate

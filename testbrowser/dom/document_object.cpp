#include "dom/document_object.h"

#include <algorithm>
#include <array>
#include <string>

namespace testbrowser::dom {
namespace {

// The page of a failed navigation, followed by the address that was asked for.
const std::string kErrorPage = "res://ieframe.dll/dnserrordiagoff.htm#";

// The members that give the document's window (the collection of frames is the window too).
constexpr std::array<std::string_view, 5> kWindowMembers = {
    "IHTMLDocument2.get_parentWindow", "IHTMLDocument.get_Script", "IHTMLDocument2.get_frames",
    "IHTMLDocument7.get_defaultView", "IHTMLDocument7.get_parentWindow"};

}  // namespace

Document::Document(std::shared_ptr<PageModel> model, Target target)
    : Object(std::move(model), target, KindNamed(target.token.empty() ? "container" : "document")) {}

void* Document::OtherInterface(REFIID iid) {
  return iid == __uuidof(IServiceProvider) ? &services_ : nullptr;
}

HRESULT Document::Forward(std::string_view member, const std::vector<Argument>& arguments,
                          ResultPlace result) {
  if (member == "IHTMLDocument2.get_URL" && model().page().ShowsErrorPage(target().frame)) {
    return PutValue(engine::JsonText(kErrorPage + model().page().FrameUrl(target().frame)).get(), result);
  }
  if (std::ranges::find(kWindowMembers, member) == kWindowMembers.end()) {
    return Object::Forward(member, arguments, result);
  }
  if (const HRESULT cleared = result.Clear(); FAILED(cleared)) return cleared;
  if (!model().page().HasFrame(target().frame)) return E_FAIL;
  return result.PutObject(quillmate::com::Query<IUnknown>(model().WindowOf(target().frame, {})));
}

}  // namespace testbrowser::dom

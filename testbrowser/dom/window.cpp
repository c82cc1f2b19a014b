#include "dom/window.h"

#include <map>

namespace testbrowser::dom {
namespace {

using quillmate::com::ComPtr;
using quillmate::com::Query;

// Where a frame's document begins in the client area of the page's window.
POINT OriginInPage(PageModel& model, engine::FrameId frame) {
  POINT origin = {};
  while (const auto parent = model.page().ParentFrame(frame)) {
    const auto element = model.page().OwnerElement(frame);
    if (!element) break;
    const Reply reply = model.Call({*parent, {}, Target::kDocument, {}}, "Agent.contentOrigin",
                                   EncodeArguments({static_cast<double>(*element)}));
    origin.x += static_cast<LONG>(engine::MemberNumber(reply.value(), "x"));
    origin.y += static_cast<LONG>(engine::MemberNumber(reply.value(), "y"));
    frame = *parent;
  }
  return origin;
}

POINT OriginOnScreen(PageModel& model, const engine::FrameId& frame) {
  POINT origin = OriginInPage(model, frame);
  if (model.site() != nullptr) ClientToScreen(model.site()->ServerWindow(), &origin);
  return origin;
}

HRESULT PutLong(LONG value, ResultPlace result) {
  const engine::JsonPtr number = engine::JsonNumber(value);
  struct NoObjects : ObjectSource {
    ComPtr<IUnknown> ObjectOf(const cJSON*) override { return nullptr; }
  } none;
  return result.Put(number.get(), none);
}

}  // namespace

Window::Window(std::shared_ptr<PageModel> model, Target target)
    : Object(std::move(model), std::move(target), KindNamed("window")) {}

void* Window::OtherInterface(REFIID iid) { return iid == __uuidof(IServiceProvider) ? &services_ : nullptr; }

HRESULT Window::Forward(std::string_view member, const std::vector<Argument>& arguments, ResultPlace result) {
  using Handler = HRESULT (Window::*)(ResultPlace);
  static const std::map<std::string_view, Handler> own = {
      {"IHTMLWindow2.get_parent", &Window::GetParent},
      {"IHTMLWindow2.get_top", &Window::GetTop},
      {"IHTMLWindow2.get_self", &Window::GetSelf},
      {"IHTMLWindow2.get_window", &Window::GetSelf},
      {"IHTMLWindow2.get_frames", &Window::GetSelf},
      {"IHTMLWindow2.get_document", &Window::GetDocument},
      {"IHTMLWindow3.get_screenLeft", &Window::GetScreenLeft},
      {"IHTMLWindow3.get_screenTop", &Window::GetScreenTop},
  };
  const auto handler = own.find(member);
  if (handler == own.end()) return Object::Forward(member, arguments, result);
  if (const HRESULT cleared = result.Clear(); FAILED(cleared)) return cleared;
  const ComPtr<Object> alive(this);
  return (this->*handler->second)(result);
}

HRESULT Window::GetParent(ResultPlace result) {
  const engine::FrameId parent = model().page().ParentFrame(frame()).value_or(frame());
  return result.PutObject(Query<IUnknown>(model().WindowOf(parent, frame())));
}

HRESULT Window::GetTop(ResultPlace result) {
  return result.PutObject(Query<IUnknown>(model().WindowOf(model().page().MainFrame(), frame())));
}

HRESULT Window::GetSelf(ResultPlace result) {
  const engine::FrameId& viewer = target().viewer.empty() ? frame() : target().viewer;
  return result.PutObject(Query<IUnknown>(model().WindowOf(frame(), viewer)));
}

HRESULT Window::GetDocument(ResultPlace result) {
  const auto document = model().DocumentOf(frame(), target().viewer);
  return document ? result.PutObject(Query<IUnknown>(*document)) : document.error();
}

HRESULT Window::GetScreenLeft(ResultPlace result) {
  return PutLong(OriginOnScreen(model(), frame()).x, result);
}

HRESULT Window::GetScreenTop(ResultPlace result) {
  return PutLong(OriginOnScreen(model(), frame()).y, result);
}

}  // namespace testbrowser::dom

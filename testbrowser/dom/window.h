// A frame's window: it outlives the frame's documents, and shows them only to scripts of their own origin.
#pragma once

#include "dom/object.h"
#include "dom/services.h"

namespace testbrowser::dom {

class Window : public Object {
 public:
  Window(std::shared_ptr<PageModel> model, Target target);
  HRESULT Forward(std::string_view member, const std::vector<Argument>& arguments,
                  ResultPlace result) override;

 protected:
  void* OtherInterface(REFIID iid) override;

 private:
  const engine::FrameId& frame() const { return target().frame; }
  HRESULT GetParent(ResultPlace result);
  HRESULT GetTop(ResultPlace result);
  HRESULT GetSelf(ResultPlace result);
  HRESULT GetDocument(ResultPlace result);
  HRESULT GetScreenLeft(ResultPlace result);
  HRESULT GetScreenTop(ResultPlace result);

  ServicesOf services_{*this};
};

}  // namespace testbrowser::dom

// A document: the node of one document, or the container that shows whatever document its frame has at the
// moment.
#pragma once

#include "dom/object.h"
#include "dom/services.h"

namespace testbrowser::dom {

class Document : public Object {
 public:
  /// @param target with a token the node of that document, without one the frame's container.
  Document(std::shared_ptr<PageModel> model, Target target);
  HRESULT Forward(std::string_view member, const std::vector<Argument>& arguments,
                  ResultPlace result) override;

 protected:
  void* OtherInterface(REFIID iid) override;

 private:
  ServicesOf services_{*this};
};

}  // namespace testbrowser::dom

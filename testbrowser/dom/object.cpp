#include "dom/object.h"

#include <algorithm>

#include "dom/enumerator.h"
#include "dom/type_libraries.h"

namespace testbrowser::dom {

using quillmate::com::ComPtr;

namespace {

// References in answers are as seen from the frame that answered.
class AnswerObjects : public ObjectSource {
 public:
  AnswerObjects(PageModel& model, const engine::FrameId& frame) : model_(model), frame_(frame) {}
  ComPtr<IUnknown> ObjectOf(const cJSON* reference) override {
    return quillmate::com::Query<IUnknown>(model_.ObjectOf(reference, frame_));
  }

 private:
  PageModel& model_;
  const engine::FrameId& frame_;
};

}  // namespace

Object::Object(std::shared_ptr<PageModel> model, Target target, const ObjectKind& kind)
    : model_(std::move(model)), target_(std::move(target)), kind_(kind) {}

Object::~Object() { model_->Ended(target_); }

ULONG Object::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG Object::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT Object::QueryInterface(REFIID iid, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (iid == __uuidof(IUnknown) || iid == __uuidof(IDispatch) || iid == __uuidof(IDispatchEx)) {
    *out = static_cast<IDispatchEx*>(this);
  } else if (iid == __uuidof(Object)) {
    *out = this;
  } else if (const FacetType* type = FacetWith(iid)) {
    *out = FacetFor(*type).Interface();
  } else {
    *out = OtherInterface(iid);
  }
  if (*out == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

const FacetType* Object::FacetWith(REFIID iid) const {
  const auto has = [&](const FacetType* type) {
    return std::ranges::any_of(type->ids, [&](const IID* id) { return *id == iid; });
  };
  const auto found = std::ranges::find_if(kind_.facets, has);
  if (found != kind_.facets.end()) return *found;
  const auto modern = std::ranges::find_if(kind_.modern_facets, has);
  return modern != kind_.modern_facets.end() && model_->ModeOf(target_) >= 9 ? *modern : nullptr;
}

FacetBase& Object::FacetFor(const FacetType& type) {
  auto& facet = facets_[&type];
  if (facet == nullptr) facet = type.make(*this);
  return *facet;
}

engine::JsonPtr Object::Reference() const {
  return engine::JsonObject().Add("$", "object").Add("t", target_.token).Add("o", target_.number).Take();
}

HRESULT Object::Forward(std::string_view member, const std::vector<Argument>& arguments, ResultPlace result) {
  if (const HRESULT cleared = result.Clear(); FAILED(cleared)) return cleared;
  // The last reference may go while the call waits.
  const ComPtr<Object> alive(this);
  if (member.ends_with(".get__newEnum")) return result.PutObject(MakeObject<Enumerator>(alive));
  engine::JsonPtr encoded = EncodeArguments(arguments);
  if (encoded == nullptr) return E_INVALIDARG;
  const Reply reply = model_->Call(target_, member, std::move(encoded));
  if (FAILED(reply.result)) return reply.result;
  const HRESULT put = PutValue(reply.value(), result);
  return FAILED(put) ? put : reply.result;
}

HRESULT Object::PutValue(const cJSON* value, ResultPlace place) {
  AnswerObjects objects(*model_, target_.frame);
  return place.Put(value, objects);
}

}  // namespace testbrowser::dom

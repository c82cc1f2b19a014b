#include "dom/enumerator.h"

#include "engine/call_fate.h"

namespace testbrowser::dom {

HRESULT Enumerator::Next(ULONG count, VARIANT* values, ULONG* fetched) {
  if (fetched != nullptr) *fetched = 0;
  if (const auto failure = engine::TakeCallFailure()) return *failure;
  if (values == nullptr && count > 0) return E_INVALIDARG;
  const quillmate::com::ComPtr<Object> collection = collection_;
  const Reply reply =
      collection->model().Call(collection->target(), "Collection.members",
                               EncodeArguments({static_cast<double>(position_), static_cast<double>(count)}));
  if (FAILED(reply.result)) return reply.result;
  ULONG got = 0;
  const cJSON* member = nullptr;
  cJSON_ArrayForEach(member, reply.value()) {
    if (got < count && SUCCEEDED(collection->PutValue(member, ResultPlace(&values[got])))) ++got;
  }
  position_ += static_cast<int>(got);
  if (fetched != nullptr) *fetched = got;
  return got == count ? S_OK : S_FALSE;
}

}  // namespace testbrowser::dom

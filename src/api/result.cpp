// Printing results by cJSON's formatted printer.
#include "api/result.h"

namespace quillmate {
namespace {

struct ItemMaker {
  cJSON* operator()(std::int32_t number) const { return cJSON_CreateNumber(number); }
  cJSON* operator()(bool flag) const { return cJSON_CreateBool(flag); }
  cJSON* operator()(const std::string& text) const { return cJSON_CreateString(text.c_str()); }
  cJSON* operator()(com::JsonPtr& json) const { return json.release(); }
};

bool IsText(const Result& result) {
  return std::holds_alternative<std::string>(result.value) ||
         std::holds_alternative<com::JsonPtr>(result.value);
}

}  // namespace

com::JsonText PrintEnvelope(Result result) {
  const com::JsonPtr envelope(cJSON_CreateObject());
  com::JsonPtr item(std::visit(ItemMaker(), result.value));
  if (!cJSON_AddBoolToObject(envelope.get(), "success", result.success) ||
      !cJSON_AddItemToObject(envelope.get(), "result", item.get())) {
    return nullptr;
  }
  static_cast<void>(item.release());
  if (!result.log.empty() && !cJSON_AddStringToObject(envelope.get(), "log", result.log.c_str()))
    return nullptr;
  return com::JsonText(cJSON_Print(envelope.get()));
}

const char* TextBuffer::Hold(com::JsonText text) {
  // Not kept for ever: a page's source. Only a swap gives a long text's memory back.
  if (text_.capacity() > kUsualLength) std::string().swap(text_);
  text_.reserve(kUsualLength);
  if (text == nullptr) return nullptr;
  return text_.assign(text.get()).c_str();
}

const char* ResultBuffers::Store(Result result) {
  TextBuffer& buffer = IsText(result) ? texts_ : flags_;
  return buffer.Hold(PrintEnvelope(std::move(result)));
}

}  // namespace quillmate

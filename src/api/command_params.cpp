#include "api/command_params.h"

#include "api/messages.h"

namespace quillmate {

std::string CommandParams::Get(const char* key) const {
  // Text after the object is accepted; the terminator belongs to the length.
  const com::JsonPtr root(cJSON_ParseWithLengthOpts(text_.c_str(), text_.size() + 1, nullptr, false));
  const cJSON* member = cJSON_GetObjectItem(root.get(), key);
  if (!cJSON_IsString(member)) return {};
  return member->valuestring;
}

OrFailure<std::string> Locator(const CommandParams& params, const char* key) {
  std::string locator = params.Get(key);
  if (!IsElementLocator(locator)) return Failed(messages::kInvalidElementLocator);
  return locator;
}

OrFailure<std::string> OptionalLocator(const CommandParams& params, const char* key) {
  std::string locator = params.Get(key);
  if (!locator.empty() && !IsElementLocator(locator)) return Failed(messages::kInvalidElementLocator);
  return locator;
}

OrFailure<std::string> TextValue(const CommandParams& params, const char* key) {
  std::string text = params.Get(key);
  if (!IsTextValue(text)) return Failed(messages::kInvalidParameter);
  return text;
}

OrFailure<CoordinatePair> Coordinates(const CommandParams& params, const char* key) {
  const auto pair = ParseCoordinatePair(params.Get(key));
  if (!pair) return Failed(messages::kInvalidCoordinate);
  return *pair;
}

}  // namespace quillmate

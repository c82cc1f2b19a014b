// Reading members out of the parameter text, which is parsed anew for each.
#include "api/command_params.h"

#include "api/result.h"

namespace quillmate::api {

std::string CommandParams::Get(const char* key) const {
  // Text after the object is accepted; the terminator belongs to the length.
  const JsonPtr root(cJSON_ParseWithLengthOpts(text_.c_str(), text_.size() + 1, nullptr, false));
  const cJSON* member = cJSON_GetObjectItem(root.get(), key);
  if (!cJSON_IsString(member)) return {};
  return member->valuestring;
}

}  // namespace quillmate::api

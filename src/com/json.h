#pragma once

#include <cJSON.h>
#include <memory>

namespace quillmate::com {

struct JsonDeleter {
  void operator()(cJSON* item) const { cJSON_Delete(item); }
};
/// An owned JSON tree.
using JsonPtr = std::unique_ptr<cJSON, JsonDeleter>;

struct JsonTextDeleter {
  void operator()(char* text) const { cJSON_free(text); }
};
/// A text that cJSON printed.
using JsonText = std::unique_ptr<char, JsonTextDeleter>;

}  // namespace quillmate::com

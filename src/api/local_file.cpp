// Whether a local page exists, asked of the file system in the ANSI code page.
#include "api/validation.h"

#include <windows.h>
#include <algorithm>

namespace quillmate::api {

bool LocalFileExists(const std::string& address) {
  constexpr size_t kSchemeLength = 8;  // "file:///", dropped whatever the bytes are
  if (address.size() < kSchemeLength) return false;
  std::string path = address.substr(kSchemeLength);
  std::replace(path.begin(), path.end(), '/', '\\');
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace quillmate::api

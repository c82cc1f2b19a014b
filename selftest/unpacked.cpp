#include "unpacked.h"

#include <windows.h>
#include <fstream>
#include <stdexcept>

namespace quillmate::selftest {

UnpackFolder::UnpackFolder()
    : path_(std::filesystem::temp_directory_path() /
            ("quillmate-selftest-" + std::to_string(GetCurrentProcessId()))) {
  std::filesystem::create_directories(path_);
}

UnpackFolder::~UnpackFolder() {
  // Windows lets go of a library a moment after its process has ended.
  std::error_code error;
  for (int round = 0; round < 20; ++round) {
    std::filesystem::remove_all(path_, error);
    if (!error) return;
    Sleep(100);
  }
}

std::filesystem::path UnpackFolder::Library() const {
  const HRSRC place = FindResourceW(nullptr, L"QUILLMATE_DLL", MAKEINTRESOURCEW(10));
  const HGLOBAL loaded = place != nullptr ? LoadResource(nullptr, place) : nullptr;
  if (loaded == nullptr) throw std::runtime_error("no library is inside this program");
  const auto file = path_ / "quillmate.dll";
  std::ofstream stream(file, std::ios::binary);
  stream.write(static_cast<const char*>(LockResource(loaded)),
               static_cast<std::streamsize>(SizeofResource(nullptr, place)));
  stream.close();
  if (!stream) throw std::runtime_error("the library cannot be unpacked into the temporary folder");
  return file;
}

}  // namespace quillmate::selftest

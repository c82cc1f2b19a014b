// What the program carries inside, as files in a folder of their own.
#pragma once

#include <filesystem>

namespace quillmate::selftest {

class UnpackFolder {
 public:
  UnpackFolder();
  UnpackFolder(const UnpackFolder&) = delete;
  UnpackFolder& operator=(const UnpackFolder&) = delete;
  /// Removes the folder.
  ~UnpackFolder();

  const std::filesystem::path& path() const { return path_; }
  /// @return the file of the library that is inside the program. Throws when it cannot be written.
  std::filesystem::path Library() const;

 private:
  std::filesystem::path path_;
};

}  // namespace quillmate::selftest

// quillmate.dll, or one like it, loaded as any host loads it.
#pragma once

#include <windows.h>

#include <expected>
#include <memory>
#include <optional>
#include <string>

#include "runner.h"

namespace quillmate::player {

class Library : public CommandHost {
 public:
  /// @param path UTF-8; empty for quillmate.dll beside this program.
  /// @return the library, or why it could not be loaded.
  static std::expected<std::unique_ptr<Library>, std::string> Load(const std::string& path);

  bool Has(const std::string& command) const override { return Find(command) != nullptr; }
  std::optional<std::string> Call(const std::string& command, const std::string& parameters) override;
  std::vector<std::string> TakeNotes() override;

 private:
  using Command = const char* (*)(const char* parameters);

  // The library stays loaded until the process ends: a worker thread of its own may outlive the last command.
  explicit Library(HMODULE module) : module_(module) {}
  Command Find(const std::string& command) const;

  HMODULE module_;
};

}  // namespace quillmate::player

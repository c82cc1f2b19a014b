#include "library.h"

#include <algorithm>
#include <array>

#include "debug_output.h"
#include "windows_text.h"

namespace quillmate::player {
namespace {

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

std::wstring PathBesideProgram(const std::wstring& name) {
  std::array<wchar_t, 32768> path{};  // the longest path there is
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring program(path.data(), length);
  return program.substr(0, program.find_last_of(L"\\/") + 1) + name;
}

// The library also exports its JSON functions; those take no parameter text and cannot be played.
bool IsCommandName(const std::string& name) {
  return std::ranges::all_of(
      name, [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; });
}

}  // namespace

std::expected<std::unique_ptr<Library>, std::string> Library::Load(const std::string& path) {
  const std::wstring wide = path.empty() ? PathBesideProgram(L"quillmate.dll") : FullPath(WideFromUtf8(path));
  HMODULE module = LoadLibraryExW(wide.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (module == nullptr) {
    return std::unexpected("cannot load " + Utf8FromWide(wide) + " (Windows error " +
                           std::to_string(GetLastError()) + ")");
  }
  TakeDebugOutput();  // begins to listen
  return std::unique_ptr<Library>(new Library(module));
}

Library::Command Library::Find(const std::string& command) const {
  if (!IsCommandName(command)) return nullptr;
  const FARPROC address = GetProcAddress(module_, command.c_str());
  return reinterpret_cast<Command>(reinterpret_cast<void*>(address));
}

std::optional<std::string> Library::Call(const std::string& command, const std::string& parameters) {
  const char* answer = Find(command)(parameters.c_str());
  if (answer == nullptr) return std::nullopt;
  return answer;  // copied: the library's own text lives until the next command only
}

std::vector<std::string> Library::TakeNotes() { return TakeDebugOutput(); }

}  // namespace quillmate::player

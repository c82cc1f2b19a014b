// Reads values of Windows' registry.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace quillmate::player {

std::optional<int> RegistryNumber(HKEY root, const std::wstring& key, const wchar_t* name);
/// @param name null for the key's default value.
std::optional<std::wstring> RegistryText(HKEY root, const std::wstring& key, const wchar_t* name);

/// @return the value for all users, or else this user's.
std::optional<int> PolicyNumber(const std::wstring& key, const wchar_t* name);
bool HasPolicyText(const std::wstring& key, const wchar_t* name);

}  // namespace quillmate::player

#include "registry.h"

namespace quillmate::player {

std::optional<int> RegistryNumber(HKEY root, const std::wstring& key, const wchar_t* name) {
  DWORD value = 0;
  DWORD size = sizeof value;
  if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value, &size) != ERROR_SUCCESS)
    return std::nullopt;
  return static_cast<int>(value);
}

std::optional<std::wstring> RegistryText(HKEY root, const std::wstring& key, const wchar_t* name) {
  DWORD size = 0;
  if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS)
    return std::nullopt;
  std::wstring text(size / sizeof(wchar_t), L'\0');
  if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size) != ERROR_SUCCESS)
    return std::nullopt;
  text.resize(text.find(L'\0'));
  return text;
}

std::optional<int> PolicyNumber(const std::wstring& key, const wchar_t* name) {
  const std::optional<int> all_users = RegistryNumber(HKEY_LOCAL_MACHINE, key, name);
  return all_users ? all_users : RegistryNumber(HKEY_CURRENT_USER, key, name);
}

bool HasPolicyText(const std::wstring& key, const wchar_t* name) {
  return RegistryText(HKEY_LOCAL_MACHINE, key, name) || RegistryText(HKEY_CURRENT_USER, key, name);
}

}  // namespace quillmate::player

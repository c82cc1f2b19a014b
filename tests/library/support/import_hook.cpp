// The library's import table.
#include "support/import_hook.h"

#include <utility>

namespace quillmate::test {
namespace {

IMAGE_THUNK_DATA* FindImport(std::string_view name) {
  auto* base = reinterpret_cast<BYTE*>(GetModuleHandleW(L"quillmate.dll"));
  const auto* headers =
      reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
  const DWORD place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + place); module->Name != 0; ++module) {
    const auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
    auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
      const auto* import = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
      if (name == import->Name) return addresses;
    }
  }
  return nullptr;
}

}  // namespace

ImportHook::ImportHook(std::string_view name, ULONG_PTR replacement) : import_(FindImport(name)) {
  if (import_ != nullptr) original_ = Put(replacement);
}

ImportHook::~ImportHook() {
  if (import_ != nullptr) Put(original_);
}

ULONG_PTR ImportHook::Put(ULONG_PTR function) {
  DWORD protection = 0;
  VirtualProtect(import_, sizeof *import_, PAGE_READWRITE, &protection);
  const ULONG_PTR previous = std::exchange(import_->u1.Function, function);
  VirtualProtect(import_, sizeof *import_, protection, &protection);
  return previous;
}

}  // namespace quillmate::test

#include "dom/type_libraries.h"

#include <exdisp.h>
#include <mshtml.h>
#include <array>
#include <map>

#include "com/owned.h"
#include "com/process.h"

namespace testbrowser::dom {
namespace {

using quillmate::com::ComPtr;
using quillmate::com::NoDestructor;

// __uuidof knows interfaces only; these are libraries.
constexpr GUID kMshtmlLibrary = {
    0x3050f1c5, 0x98b5, 0x11cf, {0xbb, 0x82, 0x00, 0xaa, 0x00, 0xbd, 0xce, 0x0b}};
constexpr GUID kBrowserLibrary = {
    0xeab22ac0, 0x30c1, 0x11cf, {0xa7, 0xeb, 0x00, 0x00, 0xc0, 0x5b, 0xae, 0x0b}};

struct IidOrder {
  bool operator()(const IID& a, const IID& b) const { return memcmp(&a, &b, sizeof(IID)) < 0; }
};

ComPtr<ITypeLib> Load(const GUID& library, WORD major, WORD minor) {
  ComPtr<ITypeLib> loaded;
  LoadRegTypeLib(library, major, minor, LOCALE_NEUTRAL, loaded.GetAddressOf());
  return loaded;
}

}  // namespace

ITypeInfo* TypeInfoOf(REFIID iid) {
  // The process may end while other threads still use them.
  using Libraries = std::array<ComPtr<ITypeLib>, 2>;
  static NoDestructor<Libraries> libraries(
      Libraries{Load(kMshtmlLibrary, 4, 0), Load(kBrowserLibrary, 1, 1)});
  static NoDestructor<std::map<IID, ComPtr<ITypeInfo>, IidOrder>> known;
  auto& info = (*known)[iid];
  for (const auto& library : *libraries) {
    if (info == nullptr && library != nullptr) library->GetTypeInfoOfGuid(iid, info.GetAddressOf());
  }
  return info.Get();
}

}  // namespace testbrowser::dom

// One reference, taken once and never given back.
#include "com/type_library.h"

#include <windows.h>
#include <mshtml.h>
#include <oleauto.h>

#include "com/com_ptr.h"

namespace quillmate::com {

void HoldTypeLibrary() {
  // {3050F1C5-98B5-11CF-BB82-00AA00BDCE0B}, which no import library carries.
  constexpr GUID kMshtml = {0x3050F1C5, 0x98B5, 0x11CF, {0xBB, 0x82, 0x00, 0xAA, 0x00, 0xBD, 0xCE, 0x0B}};
  static const ComPtr<ITypeLib>& library = *[&] {
    auto* loaded = new ComPtr<ITypeLib>;
    LoadRegTypeLib(kMshtml, 4, 0, LOCALE_NEUTRAL, loaded->GetAddressOf());
    return loaded;
  }();
  static_cast<void>(library);
}

}  // namespace quillmate::com

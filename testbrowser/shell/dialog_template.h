// A dialog's template built in memory, control by control.
#pragma once

#include <windows.h>
#include <cstdint>
#include <string>
#include <vector>

namespace testbrowser::shell {

/// In dialog units.
struct DialogArea {
  short x = 0, y = 0, width = 0, height = 0;
};

class DialogTemplate {
 public:
  DialogTemplate(const std::wstring& title, DWORD style, DialogArea area);
  enum class ControlClass : std::uint16_t { kButton = 0x0080, kEdit = 0x0081, kStatic = 0x0082 };
  DialogTemplate& Add(ControlClass control, const std::wstring& text, std::uint16_t id, DWORD style,
                      DialogArea area);
  const DLGTEMPLATE* get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

 private:
  template <class T>
  void Append(const T& value);
  void AppendText(const std::wstring& text);

  std::vector<std::uint16_t> words_;
};

}  // namespace testbrowser::shell

#include "shell/dialog_template.h"

#include <cstring>

namespace testbrowser::shell {
namespace {

constexpr std::uint16_t kFontPoints = 9;
constexpr std::uint16_t kClassByNumber = 0xFFFF;

}  // namespace

template <class T>
void DialogTemplate::Append(const T& value) {
  static_assert(sizeof(T) % sizeof(std::uint16_t) == 0);
  std::uint16_t words[sizeof(T) / sizeof(std::uint16_t)];
  std::memcpy(words, &value, sizeof value);
  words_.insert(words_.end(), std::begin(words), std::end(words));
}

void DialogTemplate::AppendText(const std::wstring& text) {
  words_.insert(words_.end(), text.begin(), text.end());
  words_.push_back(0);
}

DialogTemplate::DialogTemplate(const std::wstring& title, DWORD style, DialogArea area) {
  const DLGTEMPLATE head{style | DS_SETFONT, 0, 0, area.x, area.y, area.width, area.height};
  Append(head);
  words_.push_back(0);  // no menu
  words_.push_back(0);  // the system's dialog class
  AppendText(title);
  words_.push_back(kFontPoints);
  AppendText(L"Segoe UI");
}

DialogTemplate& DialogTemplate::Add(ControlClass control, const std::wstring& text, std::uint16_t id,
                                    DWORD style, DialogArea area) {
  if (words_.size() % 2 != 0) words_.push_back(0);  // every item begins on a double word
  const DLGITEMTEMPLATE item{style | WS_CHILD | WS_VISIBLE, 0, area.x, area.y, area.width, area.height, id};
  Append(item);
  words_.push_back(kClassByNumber);
  words_.push_back(static_cast<std::uint16_t>(control));
  AppendText(text);
  words_.push_back(0);  // no creation data
  DLGTEMPLATE head{};
  std::memcpy(&head, words_.data(), sizeof head);
  ++head.cdit;
  std::memcpy(words_.data(), &head, sizeof head);
  return *this;
}

}  // namespace testbrowser::shell

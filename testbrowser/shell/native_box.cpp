#include "shell/native_box.h"

#include <commdlg.h>
#include <algorithm>
#include <utility>

#include "com/encoding.h"
#include "engine/switches.h"
#include "shell/box_captions.h"
#include "shell/dialog_keys.h"
#include "shell/dialog_template.h"

namespace testbrowser::shell {
namespace {

using Kind = engine::ScriptBox::Kind;
using Control = DialogTemplate::ControlClass;

constexpr std::uint16_t kEditId = 0x1500;
constexpr std::uint16_t kTextId = 0xFFFF;
// With the font, exactly what the real boxes have: 0x94C801C5.
constexpr DWORD kBoxStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | WS_CLIPSIBLINGS | DS_ABSALIGN |
                            DS_MODALFRAME | DS_3DLOOK | DS_NOIDLEMSG;

constexpr short kWidth = 220;
constexpr short kMargin = 7;
constexpr short kLineHeight = 9;
constexpr short kButtonWidth = 50;
constexpr short kButtonHeight = 14;
constexpr short kEditHeight = 13;

/// How high the text stands, roughly: its own lines, and those that it wraps into.
short TextHeight(const std::wstring& text) {
  constexpr std::size_t kCharactersInLine = 50;
  constexpr std::size_t kMostLines = 30;
  std::size_t lines = 0;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(L'\n', start), text.size());
    lines += 1 + (end - start) / kCharactersInLine;
    start = end + 1;
  }
  return static_cast<short>(std::min(lines, kMostLines) * kLineHeight);
}

/// Windows' own statics and edits take "\r\n" and "\n" alike, but an ampersand is a shortcut mark to a static
/// without SS_NOPREFIX.
void AddText(DialogTemplate& box, const std::wstring& text, DialogArea area) {
  box.Add(Control::kStatic, text, kTextId, SS_LEFT | SS_NOPREFIX, area);
}

DialogTemplate AlertOrConfirm(const engine::ScriptBox& box, const BoxCaptions& captions) {
  const std::wstring text = quillmate::com::FromUtf8(box.text);
  const short text_height = TextHeight(text);
  const short button_y = static_cast<short>(text_height + 2 * kMargin);
  const short right = kWidth - kMargin - kButtonWidth;
  DialogTemplate result(captions.message_title, kBoxStyle,
                        {0, 0, kWidth, static_cast<short>(button_y + kButtonHeight + kMargin)});
  if (box.kind == Kind::kAlert) {
    // The only button of an alert has the number of Cancel.
    result.Add(Control::kButton, captions.ok, IDCANCEL, BS_DEFPUSHBUTTON | WS_TABSTOP,
               {right, button_y, kButtonWidth, kButtonHeight});
  } else {
    result.Add(Control::kButton, captions.ok, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP,
               {static_cast<short>(right - kMargin - kButtonWidth), button_y, kButtonWidth, kButtonHeight});
    result.Add(Control::kButton, captions.cancel, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP,
               {right, button_y, kButtonWidth, kButtonHeight});
  }
  AddText(result, text, {kMargin, kMargin, kWidth - 2 * kMargin, text_height});
  return result;
}

DialogTemplate Prompt(const engine::ScriptBox& box, const BoxCaptions& captions) {
  const std::wstring text = quillmate::com::FromUtf8(box.text);
  const short text_height = TextHeight(text);
  const short text_width = kWidth - 3 * kMargin - kButtonWidth;
  const short message_y = kMargin + kLineHeight + 2;
  const short edit_y = static_cast<short>(message_y + std::max<short>(text_height, kButtonHeight) + kMargin);
  const short buttons_x = kWidth - kMargin - kButtonWidth;
  DialogTemplate result(captions.prompt_title, kBoxStyle,
                        {0, 0, kWidth, static_cast<short>(edit_y + kEditHeight + kMargin)});
  AddText(result, captions.script_prompt, {kMargin, kMargin, text_width, kLineHeight});
  AddText(result, text, {kMargin, message_y, text_width, text_height});
  result.Add(Control::kButton, captions.ok, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP,
             {buttons_x, kMargin, kButtonWidth, kButtonHeight});
  result.Add(Control::kButton, captions.cancel, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP,
             {buttons_x, kMargin + kButtonHeight + 2, kButtonWidth, kButtonHeight});
  result.Add(Control::kEdit, quillmate::com::FromUtf8(box.default_text), kEditId,
             ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, {kMargin, edit_y, kWidth - 2 * kMargin, kEditHeight});
  return result;
}

void CentreOverOwner(HWND dialog) {
  RECT owner{};
  RECT box{};
  HWND over = GetWindow(dialog, GW_OWNER);
  GetWindowRect(over != nullptr ? over : GetDesktopWindow(), &owner);
  GetWindowRect(dialog, &box);
  const int x = (owner.left + owner.right - (box.right - box.left)) / 2;
  const int y = (owner.top + owner.bottom - (box.bottom - box.top)) / 2;
  SetWindowPos(dialog, nullptr, std::max(x, 0), std::max(y, 0), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

std::vector<std::string> ChooseFiles(HWND owner, bool several) {
  std::wstring chosen(0x7FFF, L'\0');
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = L"All Files (*.*)\0*.*\0";
  dialog.lpstrFile = chosen.data();
  dialog.nMaxFile = static_cast<DWORD>(chosen.size());
  dialog.lpstrTitle = L"Choose File to Upload";
  dialog.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (several) dialog.Flags |= OFN_ALLOWMULTISELECT;
  if (GetOpenFileNameW(&dialog) == 0) return {};
  // One name is a whole path; of several, the first is their folder.
  std::vector<std::string> names;
  for (const wchar_t* name = chosen.c_str(); *name != 0; name += wcslen(name) + 1) {
    names.push_back(quillmate::com::ToUtf8(name));
  }
  if (names.size() < 2) return names;
  for (std::size_t i = 1; i < names.size(); ++i) names[i] = names[0] + "\\" + names[i];
  names.erase(names.begin());
  return names;
}

NativeBox::NativeBox(TopLevelWindow& owner, const engine::ScriptBox& box,
                     std::function<void(engine::BoxAnswer)> answer)
    : kind_(box.kind), answer_(std::move(answer)), block_(owner) {
  BoxCaptions captions = CaptionsFor(GetACP());
  if (const std::string title = engine::SwitchText("box-title"); !title.empty()) {
    captions.message_title = captions.prompt_title = quillmate::com::FromUtf8(title);
  }
  const bool is_owned = engine::SwitchText("box-owner", "frame") == "frame";
  const DialogTemplate shape = kind_ == Kind::kPrompt ? Prompt(box, captions) : AlertOrConfirm(box, captions);
  dialog_ =
      CreateDialogIndirectParamW(GetModuleHandleW(nullptr), shape.get(), is_owned ? owner.hwnd() : nullptr,
                                 &Procedure, reinterpret_cast<LPARAM>(this));
  DialogKeys::Watch(dialog_);
}

NativeBox::~NativeBox() {
  DialogKeys::Forget(dialog_);
  SetWindowLongPtrW(dialog_, DWLP_USER, 0);
  // The owner is enabled first, or the system would activate a stranger when the box goes.
  block_.End();
  DestroyWindow(dialog_);
}

INT_PTR CALLBACK NativeBox::Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lparam);
    CentreOverOwner(dialog);
    return TRUE;  // the first control that can take the focus gets it
  }
  auto* box = reinterpret_cast<NativeBox*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (message != WM_COMMAND || box == nullptr || HIWORD(wparam) != BN_CLICKED) return FALSE;
  if (LOWORD(wparam) != IDOK && LOWORD(wparam) != IDCANCEL) return FALSE;
  box->OnButton(LOWORD(wparam));
  return TRUE;
}

void NativeBox::OnButton(int id) {
  engine::BoxAnswer answer;
  answer.accepted = kind_ == Kind::kAlert || id == IDOK;
  if (kind_ == Kind::kPrompt) {
    answer.text = quillmate::com::ToUtf8(WindowText(GetDlgItem(dialog_, kEditId)));
  }
  // The answer may destroy this object.
  if (const auto give = std::exchange(answer_, nullptr)) give(std::move(answer));
}

}  // namespace testbrowser::shell

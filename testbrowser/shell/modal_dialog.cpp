#include "shell/modal_dialog.h"

#include "com/encoding.h"
#include "shell/application.h"
#include "shell/dialog_features.h"

namespace testbrowser::shell {
namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kExtendedStyle = WS_EX_DLGMODALFRAME;

RECT FramePlace(const engine::ModalDialog& dialog, HWND opener) {
  RECT over{};
  GetWindowRect(opener, &over);
  RECT place = DialogClientPlace(dialog.features, over);
  AdjustWindowRectEx(&place, kStyle, FALSE, kExtendedStyle);
  return place;
}

}  // namespace

ModalDialogWindow::DialogFrame::DialogFrame(ModalDialogWindow& dialog, HWND owner, const RECT& place)
    : dialog_(dialog) {
  Create({.class_name = L"Internet Explorer_TridentDlgFrame",
          .style = kStyle,
          .extended_style = kExtendedStyle,
          .parent = owner,
          .place = place});
}

LRESULT ModalDialogWindow::DialogFrame::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (HWND child = GetWindow(hwnd(), GW_CHILD); child != nullptr) {
        SetWindowPos(child, nullptr, 0, 0, LOWORD(lparam), HIWORD(lparam), SWP_NOZORDER | SWP_NOACTIVATE);
      }
      break;
    case WM_MOVE:
      dialog_.ReportPlace();
      break;
    case WM_SETFOCUS:
      dialog_.FocusPage();
      return 0;
    case WM_CLOSE:
      dialog_.page().Close();
      return 0;
    case WM_DESTROY:
      // The opener's window may take this one with it.
      dialog_.page().Close();
      break;
    default:
      break;
  }
  return TopLevelWindow::OnMessage(message, wparam, lparam);
}

ModalDialogWindow::ModalDialogWindow(Application& application, TopLevelWindow& opener,
                                     const engine::ModalDialog& dialog)
    : PageHost(application), block_(opener), frame_(*this, opener.hwnd(), FramePlace(dialog, opener.hwnd())) {
  Attach(dialog.page, frame_.hwnd());
  // A dialog of a hidden browser stays as hidden as that.
  if (IsWindowVisible(opener.hwnd()) != 0) ShowWindow(frame_.hwnd(), SW_SHOW);
  ReportPlace();
}

void ModalDialogWindow::OnTitleChanged(const std::string& title) {
  SetWindowTextW(frame_.hwnd(), quillmate::com::FromUtf8(title).c_str());
}

void ModalDialogWindow::OnPageGone() {
  block_.End();
  frame_.Destroy();
  application().OnDialogGone(*this);
}

}  // namespace testbrowser::shell

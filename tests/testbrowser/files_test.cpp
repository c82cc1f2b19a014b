// Files between the user and a page: one chosen for an upload, one that a page gives to be saved.
#include <shlobj.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "running_browser.h"

namespace testbrowser::test {
namespace {

/// A new file in the temporary folder.
std::filesystem::path NewFile(const wchar_t* name) {
  wchar_t folder[MAX_PATH] = L"";
  GetTempPathW(MAX_PATH, folder);
  const std::filesystem::path path = std::filesystem::path(folder) / name;
  std::ofstream(path) << "text";
  return path;
}

void ClickInto(HWND window) {
  POINT place{50, 50};
  ClientToScreen(window, &place);
  SetCursorPos(place.x, place.y);
  mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
  mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

/// Types into whatever has the keyboard, and presses Enter.
void Type(const std::wstring& text) {
  INPUT key{};
  key.type = INPUT_KEYBOARD;
  for (const wchar_t c : text + L"\r") {
    key.ki.wVk = c == L'\r' ? VK_RETURN : 0;
    key.ki.wScan = c == L'\r' ? 0 : c;
    for (const DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
      key.ki.dwFlags = (c == L'\r' ? 0 : KEYEVENTF_UNICODE) | up;
      SendInput(1, &key, sizeof key);
    }
  }
}

TEST(FileChooser, TakesTheNameThatIsTyped) {
  const auto file = NewFile(L"testbrowser upload.txt");
  const RunningBrowser running(
      L"\"" +
          PageOf(L"<title>A</title><input type=file style='position:fixed;inset:0;width:300px;height:200px' "
                 L"onchange='document.title=files.length+files[0].name+files[0].size'>") +
          L"\"",
      L"");
  ASSERT_TRUE(Eventually([&] { return TextOf(running.Frame()).starts_with(L"A"); }));
  const HWND frame = running.Frame();
  ClickInto(running.Server());
  HWND dialog = nullptr;
  const auto is_open = [&] {
    dialog = running.Window(L"#32770", L"Choose File to Upload");
    return IsWindowVisible(dialog) != 0;
  };
  ASSERT_TRUE(Eventually(is_open));
  EXPECT_EQ(GetWindow(dialog, GW_OWNER), frame);
  EXPECT_FALSE(IsWindowEnabled(frame));
  VARIANT_BOOL busy = VARIANT_TRUE;
  EXPECT_EQ(running.Object()->get_Busy(&busy), S_OK) << "calls are answered meanwhile";
  ASSERT_TRUE(Eventually([&] { return GetForegroundWindow() == dialog; }));
  Type(file.native());
  EXPECT_TRUE(Eventually([&] { return TextOf(frame).starts_with(L"1testbrowser upload.txt4"); }));
  EXPECT_TRUE(IsWindowEnabled(frame));
  std::filesystem::remove(file);
}

TEST(Downloads, ComeToTheUsersFolder) {
  wchar_t* folder = nullptr;
  ASSERT_EQ(SHGetKnownFolderPath(FOLDERID_Downloads, 0, nullptr, &folder), S_OK);
  const std::filesystem::path file = std::filesystem::path(folder) / L"testbrowser download.bin";
  CoTaskMemFree(folder);
  std::filesystem::remove(file);
  const RunningBrowser running(
      L"\"" +
          PageOf(
              L"<title>A</title><a id=a download='testbrowser download.bin' "
              L"href='data:application/octet-stream,12345'>a</a><script>setTimeout(()=>a.click(),100)</script>") +
          L"\"",
      L"A");
  std::error_code none;
  EXPECT_TRUE(Eventually([&] { return std::filesystem::file_size(file, none) == 5; }));
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace testbrowser::test

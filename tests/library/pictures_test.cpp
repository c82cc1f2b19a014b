// The screenshot commands and the control information. The pictures are written to the folder that the first
// argument names, with a list of what each must show; check_pictures.py reads them with a decoder that is not
// ours.
#include <windows.h>
#include <objbase.h>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "support/import_hook.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

std::string PictureFolder() {
  const char* named = std::getenv("QUILLMATE_TEST_PICTURES");
  return named != nullptr ? named : ".";
}
const std::string folder = PictureFolder();

/// Four quarters of 32 x 24 pixels in known colours.
const std::string kPage =
    "<!doctype html><style>body{margin:0}#flag{position:absolute;left:50px;top:40px;width:64px;height:48px}"
    "#flag i{position:absolute;width:32px;height:24px}</style><div id=flag>"
    "<i style='background:#f00'></i><i style='background:#0f0;left:32px'></i>"
    "<i style='background:#00f;top:24px'></i><i style='background:#123456;left:32px;top:24px'></i></div>"
    "<p id=text style='margin-top:200px'>Some <b>words</b></p><input id=field value=held>"
    "<button id=button value=sent>Caption</button><button id=plain>Caption</button>"
    "<textarea id=area>lines</textarea><select id=list><option value=1>First<option value=2 selected>Second"
    "</select><div id=tall style='height:5000px'></div>";

class Pictures : public PageTest {
 protected:
  static void SetUpTestSuite() {
    PageTest::SetUpTestSuite();
    std::ofstream(folder + "\\expected.txt", std::ios::trunc);
  }
  /// Shows the page and waits until its flag is painted.
  static void ShowPage() {
    ASSERT_NO_FATAL_FAILURE(Show(kPage));
    ASSERT_NO_FATAL_FAILURE(AwaitPaint());
  }
  static void AwaitPaint() {
    const POINT corner = FlagCorner();
    HDC screen = GetDC(nullptr);
    COLORREF colour = 0;
    for (int round = 0; round < 100 && colour != RGB(255, 0, 0); ++round) {
      colour = GetPixel(screen, corner.x, corner.y);
      if (colour != RGB(255, 0, 0)) Sleep(50);
    }
    ReleaseDC(nullptr, screen);
    ASSERT_EQ(colour, RGB(255u, 0u, 0u)) << "the page is not painted";
  }
  /// On the screen; scrolls the flag into view.
  static POINT FlagCorner() {
    const std::string text = TextOf(Call("getelementpos", {{"target", "id=flag"}, {"area", "left-top"}}));
    int x = 0;
    int y = 0;
    EXPECT_EQ(sscanf(text.c_str(), "%d,%d", &x, &y), 2) << text;
    return {x, y};
  }
  /// Takes window shots in the three formats and notes what they must show.
  static void TakeWindowShots(const std::string& name, HWND frame) {
    const POINT corner = FlagCorner();
    RECT place;
    ASSERT_TRUE(GetWindowRect(frame, &place));
    for (const char* extension : {".png", ".bmp", ".tif"}) {
      const std::string file = name + extension;
      // A folder that ends in a separator only doubles it.
      ASSERT_EQ(Call("takescreenshot", {{"save-path", folder + "\\"}, {"file-name", file}}), Succeeded());
      Expect(file, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN), corner.x - place.left,
             corner.y - place.top);
    }
  }
  /// Notes what a picture must be: its name, its size, and where in it the four colours begin.
  static void Expect(const std::string& file, int width, int height, int left, int top) {
    std::ofstream list(folder + "\\expected.txt", std::ios::app);
    list << file << ' ' << width << ' ' << height << ' ' << left << ' ' << top << '\n';
  }
};

TEST_F(Pictures, ElementShotsHoldTheElementPixelByPixel) {
  ShowPage();
  for (const char* file : {"element.png", "element.bmp", "element.tif"}) {
    ASSERT_EQ(Call("takeelementshot", {{"target", "id=flag"}, {"save-path", folder}, {"file-name", file}}),
              Succeeded());
    Expect(file, 64, 48, 0, 0);
  }
}

TEST_F(Pictures, WindowShotsAreAsLargeAsTheScreen) {
  ShowPage();
  TakeWindowShots("window", TheBrowser().Frame());
}

/// What the library has taken from GDI and not given back.
std::atomic<int> held_contexts = 0;
std::atomic<int> held_objects = 0;
std::atomic<int> taken = 0;

template <class Handle>
Handle Note(Handle handle, std::atomic<int>& held) {
  if (handle == nullptr) return handle;
  ++held;
  ++taken;
  return handle;
}

HDC WINAPI NotedGetDC(HWND window) { return Note(GetDC(window), held_contexts); }
HDC WINAPI NotedGetWindowDC(HWND window) { return Note(GetWindowDC(window), held_contexts); }
int WINAPI NotedReleaseDC(HWND window, HDC dc) {
  const int released = ReleaseDC(window, dc);
  held_contexts -= released;
  return released;
}
HDC WINAPI NotedCreateCompatibleDC(HDC dc) { return Note(CreateCompatibleDC(dc), held_objects); }
HBITMAP WINAPI NotedCreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                                     DWORD offset) {
  return Note(CreateDIBSection(dc, info, usage, bits, section, offset), held_objects);
}
BOOL WINAPI NotedDeleteDC(HDC dc) {
  const BOOL deleted = DeleteDC(dc);
  held_objects -= deleted;
  return deleted;
}
// A bitmap that is selected into a context cannot be deleted.
BOOL WINAPI NotedDeleteObject(HGDIOBJ object) {
  const BOOL deleted = DeleteObject(object);
  held_objects -= deleted;
  return deleted;
}

// Wine counts no GDI objects, so the library's own calls are counted.
TEST_F(Pictures, ShotsGiveBackWhatTheyTakeFromGdi) {
  ShowPage();
  const ImportHook hooks[] = {
      {"GetDC", NotedGetDC},
      {"GetWindowDC", NotedGetWindowDC},
      {"ReleaseDC", NotedReleaseDC},
      {"CreateCompatibleDC", NotedCreateCompatibleDC},
      {"CreateDIBSection", NotedCreateDIBSection},
      {"DeleteDC", NotedDeleteDC},
      {"DeleteObject", NotedDeleteObject},
  };
  for (const ImportHook& hook : hooks) ASSERT_TRUE(hook.IsInForce());
  const struct {
    const char* command;
    const char* file;
    bool saved;
  } rows[] = {
      {"takeelementshot", "given.png", true},
      {"takescreenshot", "given.bmp", true},
      {"takescreenshot", "missing\\given.png", false},
  };
  for (const auto& row : rows) {
    taken = 0;
    EXPECT_EQ(
        Call(row.command, {{"target", "id=flag"}, {"save-path", folder}, {"file-name", row.file}}).success,
        row.saved);
    EXPECT_GE(taken, 4) << "a source, the screen, a memory context and a bitmap";
    EXPECT_EQ(held_contexts, 0) << row.command;
    EXPECT_EQ(held_objects, 0) << row.command;
  }
}

int WINAPI DoubleWidth(HDC dc, int index) {
  return index == DESKTOPHORZRES ? 2 * GetSystemMetrics(SM_CXSCREEN) : GetDeviceCaps(dc, index);
}

// On a scaled display a picture has the device's pixels: one factor serves both axes.
TEST_F(Pictures, ShotsOnAScaledDisplayHaveTheDevicesPixels) {
  ShowPage();
  const ImportHook scaled("GetDeviceCaps", DoubleWidth);
  ASSERT_TRUE(scaled.IsInForce());
  ASSERT_EQ(
      Call("takeelementshot", {{"target", "id=flag"}, {"save-path", folder}, {"file-name", "scaled.bmp"}}),
      Succeeded());
  std::ifstream file(folder + "\\scaled.bmp", std::ios::binary);
  char header[26];
  ASSERT_TRUE(file.read(header, sizeof header));
  EXPECT_EQ(*reinterpret_cast<LONG*>(header + 18), 128);
  EXPECT_EQ(*reinterpret_cast<LONG*>(header + 22), 96);
}

std::atomic<bool> print_may_end = false;

BOOL WINAPI HangingPrintWindow(HWND, HDC, UINT) {
  for (int round = 0; round < 300 && !print_may_end; ++round) Sleep(50);
  return TRUE;
}

// A frame that stops answering while it paints.
TEST_F(Pictures, AWindowThatDoesNotPaintHoldsNoShotUp) {
  ShowPage();
  const ImportHook hook("PrintWindow", HangingPrintWindow);
  ASSERT_TRUE(hook.IsInForce());
  const ULONGLONG begin = GetTickCount64();
  EXPECT_EQ(Call("takescreenshot", {{"save-path", folder}, {"file-name", "hanging.png"}}), Succeeded());
  EXPECT_LT(GetTickCount64() - begin, 8000u);
  print_may_end = true;
}

TEST_F(Pictures, RefusesWhatItCannotWrite) {
  ShowPage();
  const std::string failure = "Failed to save image!";
  for (const char* file : {"x.PNG", "x.jpg", "x.tiff", "x.gif", "png", ""}) {
    EXPECT_EQ(Call("takescreenshot", {{"save-path", folder}, {"file-name", file}}), Failed(failure)) << file;
    EXPECT_FALSE(std::filesystem::exists(folder + "\\" + file) && *file != 0) << file;
  }
  EXPECT_EQ(Call("takescreenshot", {{"save-path", folder + "\\missing"}, {"file-name", "x.png"}}),
            Failed(failure));
  EXPECT_EQ(Call("takeelementshot", {{"target", "id=flag"}, {"save-path", folder}, {"file-name", "x.jpg"}}),
            Failed(failure));
  EXPECT_EQ(Call("takeelementshot", {{"target", "id=none"}}), Failed("Element not found!"));
  EXPECT_EQ(Call("takeelementshot", {{"target", "id=tall"}, {"save-path", folder}, {"file-name", "x.png"}}),
            Failed("Failed to scroll the element to the view!"));
}

TEST_F(Pictures, ControlInformationSaysWhereWhatAndWhich) {
  Show(kPage);
  const struct {
    const char* target;
    const char* end;
  } rows[] = {
      {"id=flag", R"("size":{"width":64,"height":48},"tagname":"DIV","text":""})"},
      {"id=text", R"("tagname":"P","text":"Some words"})"},
      {"id=field", R"("tagname":"INPUT","text":"held"})"},
      {"id=button", R"("tagname":"BUTTON","text":"sent"})"},
      {"id=plain", R"("tagname":"BUTTON","text":""})"},
      {"id=area", R"("tagname":"TEXTAREA","text":"lines"})"},
      {"id=list", R"("tagname":"SELECT","text":"2"})"},
      {"id=tall", R"("height":5000},"tagname":"DIV","text":""})"},
  };
  for (const auto& row : rows) {
    const Envelope info = Call("getcontrolinfo", {{"target", row.target}});
    EXPECT_TRUE(info.success) << row.target;
    EXPECT_TRUE(info.result.ends_with(row.end)) << info.result;
  }
  Script("scrollTo(0, 0); 0");
  const auto [x, y] = FlagCorner();
  const std::string corner = "{\"rect\":{\"left\":" + std::to_string(x) + ",\"top\":" + std::to_string(y) +
                             ",\"right\":" + std::to_string(x + 64) +
                             ",\"bottom\":" + std::to_string(y + 48) + "},";
  EXPECT_TRUE(Call("getcontrolinfo", {{"target", "id=flag"}}).result.starts_with(corner));
}

/// Calls a command of a copy of the library.
std::string CallOf(HMODULE library, const char* command, const std::string& parameters) {
  using Command = const char* (*)(const char*);
  const auto address = reinterpret_cast<void*>(GetProcAddress(library, command));
  return reinterpret_cast<Command>(address)(parameters.c_str());
}

// The picture's encoder has a thread in the library's process, which must not outlive its code. A copy, for the
// tests' own library stays loaded; from a multi-threaded apartment, where nothing else keeps it.
TEST_F(Pictures, ALibraryThatHasTakenAPictureIsNotUnloaded) {
  ShowPage();
  const std::string url = TextOf(Call("currenturl"));
  const std::filesystem::path copy = std::filesystem::path(folder) / "unloaded.dll";
  wchar_t original[MAX_PATH] = L"";
  GetModuleFileNameW(GetModuleHandleW(L"quillmate.dll"), original, MAX_PATH);
  ASSERT_TRUE(CopyFileW(original, copy.c_str(), FALSE));
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const HMODULE library = LoadLibraryW(copy.c_str());
    EXPECT_NE(library, nullptr);
    EXPECT_TRUE(CallOf(library, "selectwindowuntop", R"({"target": "url=)" + url + "\"}").contains("true"));
    EXPECT_TRUE(CallOf(library, "takeelementshot",
                       R"({"target": "id=flag", "file-name": "loaded.png", "save-path": ")" +
                           std::filesystem::path(folder).generic_string() + "\"}")
                    .contains("true"));
    FreeLibrary(library);
    CoUninitialize();
  }).join();
  EXPECT_NE(GetModuleHandleW(L"unloaded.dll"), nullptr);
}

// The last of the file: it leaves a browser selected that has gone.
TEST_F(Pictures, ShotsOfAHostedTabShowItsTopLevelWindow) {
  const std::string url = Serve("/hosted", kPage);
  const Browser hosted(url, Shell::kHosted);
  ASSERT_EQ(Call("selectwindow", {{"target", "url=" + url}}), Succeeded());
  ASSERT_NO_FATAL_FAILURE(AwaitPaint());
  TakeWindowShots("hosted", hosted.Frame());
}

}  // namespace
}  // namespace quillmate::test

#include "pictures.h"

#include <memory>

// The GDI+ headers count on two macros and a header that a lean windows.h leaves out.
#include <objidl.h>
#include <algorithm>
using std::max;
using std::min;
#include <gdiplus.h>

#include "windows_text.h"

namespace quillmate::player {
namespace {

// Windows gives every installation this encoder.
constexpr CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

struct ScreenReleaser {
  void operator()(HDC screen) const { ReleaseDC(nullptr, screen); }
};
struct ContextDeleter {
  void operator()(HDC context) const { DeleteDC(context); }
};
struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using ScreenContext = std::unique_ptr<std::remove_pointer_t<HDC>, ScreenReleaser>;
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, ContextDeleter>;
using BitmapPtr = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

BitmapPtr CopyScreen() {
  const int width = GetSystemMetrics(SM_CXVIRTUALSCREEN);
  const int height = GetSystemMetrics(SM_CYVIRTUALSCREEN);
  const ScreenContext screen(GetDC(nullptr));
  const MemoryContext memory(CreateCompatibleDC(screen.get()));
  BitmapPtr bitmap(CreateCompatibleBitmap(screen.get(), width, height));
  if (!bitmap || !memory) return nullptr;
  const HGDIOBJ before = SelectObject(memory.get(), bitmap.get());
  const BOOL copied =
      BitBlt(memory.get(), 0, 0, width, height, screen.get(), GetSystemMetrics(SM_XVIRTUALSCREEN),
             GetSystemMetrics(SM_YVIRTUALSCREEN), SRCCOPY);
  SelectObject(memory.get(), before);
  return copied ? std::move(bitmap) : nullptr;
}

bool IsGdiPlusStarted() {
  static const bool started = [] {
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
  }();
  return started;
}

std::string AskForPicture(CommandHost& host, const std::string& folder, const std::string& name) {
  static const std::string kCommand = "takescreenshot";
  if (!host.Has(kCommand)) return "the library has no command " + kCommand;
  Step step;
  step.parameters = {{"save-path", folder}, {"file-name", name}};
  const auto answer = host.Call(kCommand, step.ParameterText());
  const auto envelope = answer ? Envelope::Read(kCommand, *answer, Utf8FromAnsi) : std::nullopt;
  return envelope ? envelope->Mismatch(std::nullopt) : kCommand + " answered no envelope";
}

}  // namespace

std::string TakePicture(CommandHost& host, const std::string& folder, const std::string& name) {
  const std::string problem = AskForPicture(host, folder, name);
  if (problem.empty() || !SaveScreen(WideFromUtf8(folder + "\\" + name))) return problem;
  return problem + " (the picture shows the whole screen)";
}

bool SaveScreen(const std::wstring& path) {
  const BitmapPtr bitmap = CopyScreen();
  if (!bitmap || !IsGdiPlusStarted()) return false;
  Gdiplus::Bitmap picture(bitmap.get(), nullptr);
  return picture.Save(path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
}

}  // namespace quillmate::player

#include "engine/picture_decoder.h"

#include <windows.h>
#include <objidl.h>
#include <wincrypt.h>
#include <algorithm>
#include <utility>
#include <vector>

#include "com/owned.h"

// GDI+'s headers count on these names of windows.h, which NOMINMAX takes away.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>
#include <shlwapi.h>

namespace testbrowser::engine {
namespace {

using quillmate::com::ComPtr;

/// GDI+ and, for its decoders, COM: for as long as the decoding thread lives.
class GraphicsScope {
 public:
  GraphicsScope() {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
  }
  ~GraphicsScope() {
    Gdiplus::GdiplusShutdown(token_);
    CoUninitialize();
  }
  GraphicsScope(const GraphicsScope&) = delete;
  GraphicsScope& operator=(const GraphicsScope&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

std::vector<BYTE> FromBase64(const std::string& text) {
  std::vector<BYTE> bytes(text.size());  // more than enough
  auto size = static_cast<DWORD>(bytes.size());
  if (CryptStringToBinaryA(text.data(), static_cast<DWORD>(text.size()), CRYPT_STRING_BASE64, bytes.data(),
                           &size, nullptr, nullptr) == FALSE) {
    return {};
  }
  bytes.resize(size);
  return bytes;
}

std::shared_ptr<const Picture> DecodePng(const std::vector<BYTE>& file) {
  ComPtr<IStream> stream;
  stream.Attach(SHCreateMemStream(file.data(), static_cast<UINT>(file.size())));
  if (stream == nullptr) return nullptr;
  Gdiplus::Bitmap bitmap(stream.Get());
  const auto width = static_cast<INT>(bitmap.GetWidth());
  const auto height = static_cast<INT>(bitmap.GetHeight());
  if (bitmap.GetLastStatus() != Gdiplus::Ok || width == 0 || height == 0) return nullptr;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  Gdiplus::BitmapData data{};
  data.Width = static_cast<UINT>(width);
  data.Height = static_cast<UINT>(height);
  data.Stride = width * 4;
  data.PixelFormat = PixelFormat32bppRGB;
  data.Scan0 = pixels.data();
  const Gdiplus::Rect all(0, 0, width, height);
  constexpr UINT kIntoOurs = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
  if (bitmap.LockBits(&all, kIntoOurs, PixelFormat32bppRGB, &data) != Gdiplus::Ok) return nullptr;
  bitmap.UnlockBits(&data);
  return std::make_shared<const Picture>(width, height, std::move(pixels));
}

}  // namespace

PictureDecoder::PictureDecoder(std::function<void(std::shared_ptr<const Picture>)> on_picture)
    : on_picture_(std::move(on_picture)), wakeup_([this] { Deliver(); }), worker_([this] { Work(); }) {}

PictureDecoder::~PictureDecoder() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_one();
  worker_.join();
}

void PictureDecoder::Decode(std::string base64) {
  {
    const std::lock_guard lock(mutex_);
    file_ = std::move(base64);
  }
  changed_.notify_one();
}

std::optional<std::string> PictureDecoder::NextFile() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return ending_ || file_.has_value(); });
  return ending_ ? std::nullopt : std::exchange(file_, std::nullopt);
}

void PictureDecoder::Work() {
  const GraphicsScope graphics;
  while (const auto file = NextFile()) {
    auto picture = DecodePng(FromBase64(*file));
    {
      const std::lock_guard lock(mutex_);
      decoded_ = std::move(picture);
    }
    wakeup_.Wake();
  }
}

void PictureDecoder::Deliver() {
  std::optional<std::shared_ptr<const Picture>> picture;
  {
    const std::lock_guard lock(mutex_);
    picture = std::exchange(decoded_, std::nullopt);
  }
  if (picture) on_picture_(std::move(*picture));
}

}  // namespace testbrowser::engine

// Percent codes are UTF-8 here. The platform's PathCreateFromUrl, UrlUnescape and UrlEscape read and write them as
// Latin-1, also with URL_UNESCAPE_AS_UTF8 and URL_ESCAPE_AS_UTF8 (measured under Wine 8), so they cannot serve.
#include "engine/file_address.h"

#include <windows.h>
#include <algorithm>
#include <cctype>
#include <memory>
#include <optional>

#include "com/encoding.h"

namespace testbrowser::engine {
namespace {

using quillmate::com::FromUtf8;
using quillmate::com::ToUtf8;

constexpr std::string_view kScheme = "file:";

bool HasScheme(std::string_view address) {
  return address.size() >= kScheme.size() &&
         std::ranges::equal(address.substr(0, kScheme.size()), kScheme, {},
                            [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
}

bool BeginsWithDrive(std::string_view path) {
  return path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) != 0 &&
         (path[1] == ':' || path[1] == '|');
}

int HexValue(char digit) {
  const auto c = static_cast<unsigned char>(digit);
  if (std::isxdigit(c) == 0) return -1;
  return std::isdigit(c) != 0 ? c - '0' : std::tolower(c) - 'a' + 10;
}

std::string PercentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escape =
        text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 && HexValue(text[i + 2]) >= 0;
    decoded += escape ? static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2])) : text[i];
    if (escape) i += 2;
  }
  return decoded;
}

/// A path as an address spells it: only what would end or break the path is escaped, and all non-ASCII bytes.
std::string PercentEncoded(std::string_view path) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  constexpr std::string_view kPlain = "/-_.~!$&'()*+,;=:@";
  std::string encoded;
  for (const char character : path) {
    const auto c = static_cast<unsigned char>(character);
    if (c < 0x80 && (std::isalnum(c) != 0 || kPlain.find(character) != std::string_view::npos)) {
      encoded += character;
    } else {
      encoded += {'%', kHex[c >> 4], kHex[c & 15]};
    }
  }
  return encoded;
}

struct HeapFreer {
  void operator()(void* memory) const { HeapFree(GetProcessHeap(), 0, memory); }
};

template <class Function>
Function* WineExport(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

/// The Windows path (UTF-8) of a Linux path; empty when no drive holds it.
std::string WindowsPath(const std::string& linux_path) {
  static const auto convert = WineExport<LPWSTR CDECL(LPCSTR)>("wine_get_dos_file_name");
  if (convert == nullptr) return {};
  // Wine spoils what the locale's encoding lacks. The drive is found by the first, plain folders alone.
  const auto odd =
      std::ranges::find_if(linux_path, [](unsigned char c) { return c >= 0x80; }) - linux_path.begin();
  const auto plain = static_cast<std::size_t>(odd) == linux_path.size()
                         ? linux_path.size()
                         : linux_path.rfind('/', static_cast<std::size_t>(odd)) + 1;
  const std::unique_ptr<wchar_t, HeapFreer> path(convert(linux_path.substr(0, plain).c_str()));
  return path != nullptr ? ToUtf8(path.get()) + linux_path.substr(plain) : "";
}

struct LocalFile {
  std::string path;  ///< decoded, with forward slashes: "C:/a b.htm", or "home/u" of Linux
  std::string tail;  ///< "?query#fragment"
};

/// @return nothing for what is neither a file's address nor a path with a drive.
std::optional<LocalFile> Parse(std::string_view address) {
  LocalFile file{std::string(address), {}};
  if (HasScheme(address)) {
    const std::string_view rest = address.substr(kScheme.size());
    const auto end = std::min(rest.find_first_of("?#"), rest.size());
    const auto begin = std::min(rest.find_first_not_of("/\\"), end);
    file = {PercentDecoded(rest.substr(begin, end - begin)), std::string(rest.substr(end))};
  } else if (!BeginsWithDrive(address)) {
    return std::nullopt;
  }
  std::ranges::replace(file.path, '\\', '/');
  if (BeginsWithDrive(file.path)) {
    file.path[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(file.path[0])));
    file.path[1] = ':';
  }
  return file;
}

}  // namespace

std::string LinuxPath(const std::string& windows_path) {
  static const auto convert = WineExport<char * CDECL(LPCWSTR)>("wine_get_unix_file_name");
  if (convert == nullptr) return {};
  const std::unique_ptr<char, HeapFreer> path(convert(FromUtf8(windows_path).c_str()));
  if (path != nullptr) return path.get();
  // A missing folder with letters that the locale lacks is refused; its parent may be known.
  const auto last = windows_path.rfind('\\');
  const std::string parent = last != std::string::npos ? LinuxPath(windows_path.substr(0, last)) : "";
  return parent.empty() ? "" : parent + "/" + windows_path.substr(last + 1);
}

std::string ToWindowsAddress(std::string_view address) {
  const auto file = Parse(address);
  if (!file) return std::string(address);
  std::string path = BeginsWithDrive(file->path) ? file->path : WindowsPath("/" + file->path);
  std::ranges::replace(path, '\\', '/');
  return path.empty() ? std::string(address) : "file:///" + PercentEncoded(path) + file->tail;
}

std::string ToLinuxAddress(std::string_view windows_address) {
  const auto file = Parse(windows_address);
  if (!file || !BeginsWithDrive(file->path)) return std::string(windows_address);
  std::string windows_path = file->path;
  std::ranges::replace(windows_path, '/', '\\');
  const std::string path = LinuxPath(windows_path);
  return path.empty() ? std::string(windows_address) : "file://" + PercentEncoded(path) + file->tail;
}

}  // namespace testbrowser::engine

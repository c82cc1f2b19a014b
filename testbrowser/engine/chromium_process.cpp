#include "engine/chromium_process.h"

#include <string>

#include "com/owned.h"

namespace testbrowser::engine {
namespace {

// Run by sh with the socket as standard input. Chromium wants its messages on descriptors 3 and 4, in
// blocking mode (Wine leaves sockets non-blocking; the flag belongs to the socket, so another process may
// clear it). What else was inherited is let go: somebody may wait for the end of a pipe among it.
constexpr wchar_t kLauncher[] =
    L"exec >/dev/null 2>&1; export PATH=/usr/bin:/bin; "
    L"exec perl -MFcntl -e 'fcntl(STDIN, F_SETFL, fcntl(STDIN, F_GETFL, 0) & ~O_NONBLOCK); "
    L"require POSIX; POSIX::close($_) for 3..255; exec @ARGV' "
    L"sh -c 'profile=$(mktemp -d); "
    L"HOME=$profile /usr/lib/chromium/chromium --user-data-dir=$profile \"$@\" 3<&0 4>&0 </dev/null; "
    L"rm -rf $profile' sh \"$@\"";

// Site isolation off keeps frames of other origins, and sandboxed ones, in their page's own session (script
// access stays denied, as in Internet Explorer). Throttling off: every tab counts as shown. Input counts from
// the first moment, not from the first picture on: a press that comes sooner would be dropped. A
// context menu comes with the button's release, as on Windows.
constexpr wchar_t kFlags[] =
    L"--headless=new --remote-debugging-pipe --no-sandbox --disable-gpu --disable-quic --no-first-run "
    L"--disable-background-networking --disable-component-update --disable-sync --disable-default-apps "
    L"--disable-extensions --disable-popup-blocking --allow-file-access-from-files "
    L"--disable-site-isolation-trials --disable-features=IsolateOrigins,site-per-process,"
    L"IsolateSandboxedIframes,Translate,BackForwardCache --allow-pre-commit-input "
    L"--disable-background-timer-throttling --disable-backgrounding-occluded-windows "
    L"--disable-renderer-backgrounding --disable-hang-monitor --password-store=basic "
    L"--blink-settings=showContextMenuOnMouseUp=true --no-startup-window";

/// The launcher as one argument of a Windows command line.
std::wstring Quoted(const wchar_t* text) {
  std::wstring quoted = L"\"";
  for (const wchar_t* c = text; *c != 0; ++c) {
    if (*c == L'"') quoted += L'\\';
    quoted += *c;
  }
  return quoted + L'"';
}

}  // namespace

bool StartChromium(UniqueSocket devtools) {
  const auto socket = reinterpret_cast<HANDLE>(devtools.get());
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = startup.hStdOutput = socket;
  std::wstring command = L"sh -c " + Quoted(kLauncher) + L" sh " + kFlags;
  PROCESS_INFORMATION process{};
  // Detached: a program without a console would make Wine ask for a new one and close the child's standard
  // input and output instead of handing ours on.
  const BOOL started = CreateProcessW(LR"(\\?\unix\bin\sh)", command.data(), nullptr, nullptr, TRUE,
                                      DETACHED_PROCESS, nullptr, nullptr, &startup, &process);
  const quillmate::com::UniqueHandle process_handle(process.hProcess);
  const quillmate::com::UniqueHandle thread_handle(process.hThread);
  return started != FALSE;
}

}  // namespace testbrowser::engine

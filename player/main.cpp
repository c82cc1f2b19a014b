// quillmate-play.exe: loads the library as any host would and plays a script of commands, or serves them.
#include <windows.h>
#include <shellapi.h>

#include <memory>

#include "play.h"
#include "windows_text.h"

namespace quillmate::player {
namespace {

std::vector<std::string> Arguments() {
  struct LocalDeleter {
    void operator()(wchar_t** arguments) const { LocalFree(static_cast<void*>(arguments)); }
  };
  int count = 0;
  const std::unique_ptr<wchar_t*, LocalDeleter> wide(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Utf8FromWide(wide.get()[i]));
  return arguments;
}

int Run() {
  StandardStream out(STD_OUTPUT_HANDLE);
  StandardStream errors(STD_ERROR_HANDLE);
  const auto options = ParseOptions(Arguments());
  if (!options) {
    errors.Write("quillmate-play: " + options.error() + " (see --help)\n");
    return kWrongCall;
  }
  if (options->help) {
    out.Write(kHelp);
    return kAllAsExpected;
  }
  return PlayScript(*options, out, errors);
}

}  // namespace
}  // namespace quillmate::player

int main() { return quillmate::player::Run(); }

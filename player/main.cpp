// quillmate-play.exe: loads the library as any host would and plays a script of commands, or serves them.
#include <windows.h>
#include <shellapi.h>

#include <memory>

#include "browser_guard.h"
#include "machine_facts.h"
#include "play.h"
#include "serve.h"
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

int Serve(const Options& options) {
  StandardStream out(TakeStandardHandle(STD_OUTPUT_HANDLE));
  StandardStream errors(TakeStandardHandle(STD_ERROR_HANDLE));
  return ServeRequests(options, out, errors);
}

int Doctor(const Options& options, StandardStream& out) {
  const std::vector<Finding> findings = Examine(ReadFacts());
  out.Write(options.json ? FindingsJson(findings) : FindingsText(findings));
  return IsReady(findings) ? kAllAsExpected : kStepFailed;
}

int Run() {
  const auto options = ParseOptions(Arguments());
  if (options && options->guard_browsers) return GuardBrowsers();
  if (options && options->serve) return Serve(*options);
  StandardStream out(GetStdHandle(STD_OUTPUT_HANDLE));
  StandardStream errors(GetStdHandle(STD_ERROR_HANDLE));
  if (!options) {
    errors.Write("quillmate-play: " + options.error() + " (see --help)\n");
    return kWrongCall;
  }
  if (options->help) {
    out.Write(kHelp);
    return kAllAsExpected;
  }
  if (options->doctor) return Doctor(*options, out);
  return PlayScript(*options, out, errors);
}

}  // namespace
}  // namespace quillmate::player

int main() { return quillmate::player::Run(); }

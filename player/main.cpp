// quillmate-play.exe: loads the library as any host would and plays a script of commands.
#include <windows.h>
#include <shellapi.h>

#include <fstream>
#include <filesystem>
#include <iterator>

#include "crash.h"
#include "library.h"
#include "options.h"
#include "output.h"
#include "printers.h"
#include "progress.h"
#include "report.h"
#include "windows_text.h"

namespace quillmate::player {
namespace {

constexpr std::size_t kPipedColumns = 118;

enum ExitCode { kAllAsExpected = 0, kStepFailed = 1, kWrongCall = 2 };

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

std::optional<std::string> ReadFile(const std::string& path) {
  std::ifstream file(std::filesystem::path(WideFromUtf8(path)), std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

class Program {
 public:
  int Run() {
    auto options = ParseOptions(Arguments());
    if (!options) return Wrong(options.error() + " (--help tells how it is called)");
    if (options->help) {
      out_.Write(kHelp);
      return kAllAsExpected;
    }
    options_ = *std::move(options);
    const std::optional<std::string> text = ReadFile(options_.script);
    if (!text) return Wrong("cannot read " + options_.script);
    auto steps = ParseScript(*text, options_.variables);
    if (!steps) return Wrong(Located(steps.error()));
    auto library = Library::Load(options_.dll);
    if (!library) return Wrong(library.error());
    if (const auto unknown = FindUnknownCommand(*steps, **library)) return Wrong(Located(*unknown));
    return PlaySteps(*steps, **library);
  }

 private:
  int Wrong(const std::string& message) {
    errors_.Write("quillmate-play: " + message + "\n");
    return kWrongCall;
  }

  std::string Located(const ScriptError& error) const {
    return options_.script + ":" + std::to_string(error.line) + ":" + std::to_string(error.column) + ": " +
           error.message;
  }

  int PlaySteps(std::span<const Step> steps, Library& library) {
    const std::optional<std::size_t> columns = out_.ConsoleColumns();
    StepPrinter step_printer(out_, steps, columns.value_or(kPipedColumns));
    JsonPrinter json_printer(out_, errors_);
    CrashReporter crash_reporter(errors_);
    std::optional<Progress> progress;
    std::optional<Report> report;
    std::vector<Observer*> observers;
    if (columns) observers.push_back(&progress.emplace(out_, *columns));
    observers.push_back(options_.json ? static_cast<Observer*>(&json_printer) : &step_printer);
    if (!options_.report.empty()) {
      observers.push_back(&report.emplace(MakeReport(steps, library)));
      if (!report->Good()) return Wrong("cannot write into the folder " + options_.report);
    }
    observers.push_back(&crash_reporter);
    const RunSettings settings{.keep_going = options_.keep_going, .decode = Utf8FromAnsi};
    const Summary summary = Play(steps, library, settings, observers);
    if (report && !report->Good()) return Wrong("cannot write on into the folder " + options_.report);
    if (report && !options_.json) out_.Write("Report: " + Utf8FromWide(report->Path().wstring()) + "\n");
    return summary.Passed() ? kAllAsExpected : kStepFailed;
  }

  Report MakeReport(std::span<const Step> steps, Library& library) const {
    namespace fs = std::filesystem;
    const fs::path folder = fs::absolute(PathFromUtf8(options_.report));
    std::error_code already_there;
    fs::create_directories(folder, already_there);
    const PictureTaker take_picture = [&library,
                                       place = Utf8FromWide(folder.wstring())](const std::string& name) {
      return TakePicture(library, place, name);
    };
    const std::wstring title = PathFromUtf8(options_.script).filename().wstring();
    return Report(folder, Utf8FromWide(title), steps, take_picture);
  }

  static std::string TakePicture(Library& library, const std::string& folder, const std::string& name) {
    static const std::string kCommand = "takescreenshot";
    if (!library.Has(kCommand)) return "the library has no command " + kCommand;
    Step step;
    step.parameters = {{"save-path", folder}, {"file-name", name}};
    const auto answer = library.Call(kCommand, step.ParameterText());
    const auto envelope = answer ? Envelope::Read(kCommand, *answer, Utf8FromAnsi) : std::nullopt;
    return envelope ? envelope->Mismatch(std::nullopt) : kCommand + " answered no envelope";
  }

  StandardStream out_{STD_OUTPUT_HANDLE};
  StandardStream errors_{STD_ERROR_HANDLE};
  Options options_;
};

}  // namespace
}  // namespace quillmate::player

int main() { return quillmate::player::Program().Run(); }

#include "play.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "crash.h"
#include "library.h"
#include "pictures.h"
#include "progress.h"
#include "report.h"
#include "windows_text.h"

namespace quillmate::player {
namespace {

constexpr std::size_t kPipedColumns = 118;

std::optional<std::string> ReadScript(const std::string& path) {
  if (path == "-") return ReadStandardInput();
  std::ifstream file(std::filesystem::path(WideFromUtf8(path)), std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

class Player {
 public:
  Player(const Options& options, StandardStream& out, StandardStream& errors)
      : options_(options), out_(out), errors_(errors) {}

  int Run() {
    const std::optional<std::string> text = ReadScript(options_.script);
    if (!text) return Wrong("cannot read " + options_.script);
    auto steps = ParseScript(*text, options_.variables);
    if (!steps) return Wrong(Located(steps.error()));
    if (steps->empty()) return Wrong(options_.script + ": no steps");
    auto library = Library::Load(options_.dll);
    if (!library) return Wrong(library.error());
    if (const auto wrong = FindWrongStep(*steps, **library)) return Wrong(Located(*wrong));
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
    CrashReporter crash_reporter(errors_, columns.has_value());
    std::optional<Progress> progress;
    std::optional<Report> report;
    std::vector<Observer*> observers;
    if (columns) observers.push_back(&progress.emplace(out_, *columns));
    observers.push_back(options_.json ? static_cast<Observer*>(&json_printer) : &step_printer);
    // Before the report, which calls the library for its pictures.
    observers.push_back(&crash_reporter);
    if (!options_.report.empty()) {
      observers.push_back(&report.emplace(MakeReport(steps, library)));
      if (!report->Good()) return Wrong("cannot write into the folder " + options_.report);
    }
    const RunSettings settings{.keep_going = options_.keep_going, .decode = Utf8FromAnsi};
    const Summary summary = Play(steps, library, settings, observers);
    if (report && !report->Good()) return Wrong("cannot continue writing to the folder " + options_.report);
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

  const Options& options_;
  StandardStream& out_;
  StandardStream& errors_;
};

}  // namespace

int PlayScript(const Options& options, StandardStream& out, StandardStream& errors) {
  return Player(options, out, errors).Run();
}

}  // namespace quillmate::player

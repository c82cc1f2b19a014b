#include "serve.h"

#include <filesystem>

// The version is all that is needed of it here.
#define QUILLMATE_NO_PROTOTYPES
#include "quillmate.h"

#include "browser_guard.h"
#include "crash.h"
#include "library.h"
#include "pictures.h"
#include "play.h"
#include "report.h"
#include "server.h"
#include "windows_text.h"

namespace quillmate::player {
namespace {

constexpr std::size_t kLongestLine = 16 * 1024 * 1024;  // bytes
constexpr std::chrono::milliseconds kForAPicture{10'000};

class InputPipe : public ByteSource {
 public:
  explicit InputPipe(HANDLE handle) : handle_(handle) {}

  std::size_t Read(std::span<char> buffer) override {
    DWORD read = 0;
    const bool ok =
        ReadFile(handle_.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &read, nullptr) != 0;
    return ok ? read : 0;
  }

  /// @return whether nobody is left at the other end and nothing is in the pipe.
  bool Ended() const {
    return !PeekNamedPipe(handle_.get(), nullptr, 0, nullptr, nullptr, nullptr) &&
           GetLastError() == ERROR_BROKEN_PIPE;
  }

 private:
  UniqueHandle handle_;
};

// Calls the library on its thread and no longer than a picture is worth.
class PictureHost : public CommandHost {
 public:
  PictureHost(const CommandHost& host, CallThread& calls) : host_(host), calls_(calls) {}
  bool Has(const std::string& command) const override { return host_.Has(command); }
  std::optional<std::string> Call(const std::string& command, const std::string& parameters) override {
    const auto end = std::chrono::steady_clock::now() + kForAPicture;
    return calls_.Make({"null", command, parameters}, [end] { return end; }).answer;
  }

 private:
  const CommandHost& host_;
  CallThread& calls_;
};

/// Makes a directory of its own for pictures: where it is, and how they get there.
class Shots {
 public:
  Shots(const std::string& folder, CommandHost& host) : host_(host) {
    if (folder.empty()) return;
    const std::filesystem::path path = std::filesystem::absolute(PathFromUtf8(folder));
    std::error_code already_there;
    std::filesystem::create_directories(path, already_there);
    folder_ = Utf8FromWide(path.wstring());
  }

  std::pair<std::string, std::string> Save(const std::string& name, bool ask_library) const {
    const std::string path = folder_ + "\\" + name;
    std::error_code not_there;
    std::filesystem::remove(PathFromUtf8(path), not_there);
    std::string problem = ask_library ? TakePicture(host_, folder_, name) : SaveWithoutLibrary(path);
    return {std::filesystem::exists(PathFromUtf8(path), not_there) ? path : "", std::move(problem)};
  }

 private:
  static std::string SaveWithoutLibrary(const std::string& path) {
    SaveScreen(WideFromUtf8(path));
    return "the library is busy (the picture shows the whole screen)";
  }

  CommandHost& host_;
  std::string folder_;
};

class ServerProcess {
 public:
  ServerProcess(const Options& options, StandardStream& out, Library& library, HANDLE input)
      : options_(options),
        out_(out),
        library_(library),
        input_(input),
        calls_(library,
               [](const Call& call) {
                 KeepStackForCrashes();
                 auto [before, after] = LastLine(call);
                 SetCrashMessage(std::move(before), std::move(after));
               }),
        picture_host_(library, calls_),
        shots_(options.shots, picture_host_) {
    if (options.close_browsers) guard_ = BrowserGuard::Start();
  }

  bool Ready() const { return guard_ || !options_.close_browsers; }

  void Run() {
    ReportCrashesTo(out_);
    SetCrashMessage(R"({"id":null,"success":false,"error":")", "\",\"crashed\":true}\n");
    LineInput lines(input_, kLongestLine);
    Server(lines, out_, library_, calls_, Settings()).Run();
  }

  void CloseBrowsers() { guard_.reset(); }
  bool Busy() { return calls_.Busy(); }

 private:
  ServerSettings Settings() {
    ServerSettings settings;
    settings.version = QUILLMATE_VERSION;
    settings.code_page = GetACP();
    settings.decode = Utf8FromAnsi;
    settings.input_ended = [this] { return input_.Ended(); };
    if (!options_.shots.empty()) {
      settings.save_picture = [this](const std::string& name, bool ask_library) {
        return shots_.Save(name, ask_library);
      };
    }
    if (guard_) {
      settings.after_call = [this](const Step& step, bool returned) {
        guard_->AfterCommand(step.command, returned);
      };
    }
    return settings;
  }

  const Options& options_;
  StandardStream& out_;
  Library& library_;
  InputPipe input_;
  CallThread calls_;
  PictureHost picture_host_;
  Shots shots_;
  std::unique_ptr<BrowserGuard> guard_;
};

int Wrong(StandardStream& errors, const std::string& message) {
  errors.Write("quillmate-play: " + message + "\n");
  return kWrongCall;
}

}  // namespace

int ServeRequests(const Options& options, StandardStream& out, StandardStream& errors) {
  const HANDLE input = TakeStandardHandle(STD_INPUT_HANDLE);
  auto library = Library::Load(options.dll);
  if (!library) return Wrong(errors, library.error());
  {
    ServerProcess process(options, out, **library, input);
    if (!process.Ready()) return Wrong(errors, "cannot start the process that closes browsers");
    process.Run();
    process.CloseBrowsers();
    // A command that has not returned would be waited for.
    if (process.Busy()) TerminateProcess(GetCurrentProcess(), kAllAsExpected);
  }
  return kAllAsExpected;
}

}  // namespace quillmate::player

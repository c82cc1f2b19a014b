// quillmate-play.exe as its callers see it: what it prints and how it exits, in the code page that the test
// runs in.
#include <windows.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace {

namespace fs = std::filesystem;

struct Played {
  DWORD exit_code;
  std::string out, errors;
};

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

std::string ReadText(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

UniqueHandle CreateInheritedFile(const fs::path& path) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return UniqueHandle(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
}

UniqueHandle PipeThatHolds(const std::string& text) {
  HANDLE read_end = nullptr;
  HANDLE write_end = nullptr;
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  CreatePipe(&read_end, &write_end, &inherited, static_cast<DWORD>(text.size() + 1));
  const UniqueHandle writer(write_end);
  DWORD written = 0;
  WriteFile(write_end, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  return UniqueHandle(read_end);
}

fs::path BesideThisProgram(const wchar_t* name) {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
  return fs::path(path.data()).parent_path() / name;
}

class PlayerProgram : public testing::Test {
 protected:
  PlayerProgram()
      : folder_(fs::temp_directory_path() / (L"quillmate-play " + std::to_wstring(GetCurrentProcessId()))) {
    fs::create_directory(folder_);
  }
  ~PlayerProgram() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  Played Play(const std::string& script, const std::wstring& options = L"") {
    const fs::path path = folder_ / "script.jsonl";
    std::ofstream(path, std::ios::binary) << script;
    return Start(L"\"" + path.wstring() + L"\" --dll \"" +
                 BesideThisProgram(L"fake_quillmate.dll").wstring() + L"\" " + options);
  }

  Played Start(const std::wstring& arguments) {
    std::wstring line = L"\"" + BesideThisProgram(L"quillmate-play.exe").wstring() + L"\" " + arguments;
    PROCESS_INFORMATION process{};
    {
      const UniqueHandle input_pipe = PipeThatHolds(input_);
      const UniqueHandle out = CreateInheritedFile(folder_ / "out");
      const UniqueHandle errors = CreateInheritedFile(folder_ / "errors");
      STARTUPINFOW startup{};
      startup.cb = sizeof startup;
      startup.dwFlags = STARTF_USESTDHANDLES;
      startup.hStdInput = input_pipe.get();
      startup.hStdOutput = out.get();
      startup.hStdError = errors.get();
      EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder_.c_str(),
                                 &startup, &process));
    }
    const UniqueHandle process_handle(process.hProcess);
    const UniqueHandle thread_handle(process.hThread);
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 30'000), WAIT_OBJECT_0);
    Played run{};
    GetExitCodeProcess(process.hProcess, &run.exit_code);
    run.out = ReadText(folder_ / "out");
    run.errors = ReadText(folder_ / "errors");
    return run;
  }

  fs::path folder_;
  std::string input_;
};

// The letter that the code page lacks comes as its default character.
std::string AnsiText() { return GetACP() == 936 ? "é确" : "é?"; }

TEST_F(PlayerProgram, ShowsTextsOfBothEncodingsInUtf8) {
  const Played run =
      Play("{\"command\":\"gettext\",\"expect\":{\"result\":\"" + AnsiText() +
               "\"}}\n"
               "{\"command\":\"gettable\",\"expect\":{\"result\":[[0],[\"é确\"]]}}\n"
               "{\"command\":\"currenturl\",\"expect\":{\"result\":\"file:///C:/${NAME}.html\"}}\n"
               "{\"command\":\"type_m\",\"target\":\"id=a\",\"value\":\"${NAME}😀\"}\n",
           L"--set NAME=é确 --json");
  EXPECT_EQ(run.exit_code, 0U) << run.errors;
  EXPECT_TRUE(run.out.contains(R"({"line":1,"command":"gettext","envelope":{"success":true,"result":")" +
                               AnsiText() + R"("},"ms":)"))
      << run.out;
  EXPECT_TRUE(run.out.contains(R"("result":"[[0],[\"é确\"]]")")) << run.out;
  EXPECT_TRUE(run.out.contains(R"("result":"file:///C:/é确.html")")) << run.out;
  EXPECT_TRUE(run.out.contains(R"("command":"type_m","envelope":{"success":true,"result":true})")) << run.out;
}

TEST_F(PlayerProgram, ExitsWithOneWhenAStepFails) {
  const std::string failing = "{\"command\":\"click\",\"target\":\"id=a\"}\n{\"command\":\"gettext\"}\n";
  const Played stopped = Play(failing);
  EXPECT_EQ(stopped.exit_code, 1U);
  EXPECT_TRUE(stopped.out.contains("FAILED  Element not found!")) << stopped.out;
  EXPECT_TRUE(stopped.out.contains("1 of 2 steps failed, 1 not played, in")) << stopped.out;
  const Played kept_going = Play(failing, L"--keep-going");
  EXPECT_EQ(kept_going.exit_code, 1U);
  EXPECT_TRUE(kept_going.out.contains("1 of 2 steps failed in")) << kept_going.out;
}

TEST_F(PlayerProgram, ExitsWithTwoAndAPlaceWhenTheScriptOrTheCallIsWrong) {
  struct Row {
    std::string script;
    std::wstring options;
    std::string error;
  };
  const Row rows[] = {
      {"{\"command\":\"gettext\"}\n{\"command\":\"gettxt\"}", L"",
       "script.jsonl:2:12: the library has no command"},
      {"{\"command\":\"click\",\"targt\":\"id=a\"}", L"",
       "script.jsonl:1:20: \"click\" has no parameter \"targt\""},
      {"", L"", "script.jsonl: no steps"},
      {"# nothing\n\n", L"", "script.jsonl: no steps"},
      {"{\"command\":\"cJSON_Parse\"}", L"", "script.jsonl:1:12: the library has no command"},
      {"\n{\"command\"", L"", "script.jsonl:2:"},
      {"{\"command\":\"open\",\"target\":\"${PAGE}\"}", L"", "script.jsonl:1:29: ${PAGE} has no value"},
      {"{\"command\":\"gettext\"}", L"--nonsense", "unknown option --nonsense"},
  };
  for (const Row& row : rows) {
    const Played run = Play(row.script, row.options);
    EXPECT_EQ(run.exit_code, 2U) << row.script;
    EXPECT_EQ(run.out, "") << row.script;
    EXPECT_TRUE(run.errors.contains(row.error)) << run.errors;
  }
  EXPECT_EQ(Start(L"missing.jsonl").exit_code, 2U);
}

TEST_F(PlayerProgram, WritesAReportThatOutlivesACrash) {
  const fs::path folder = folder_ / "new" / "report";
  const Played run = Play("{\"command\":\"gettext\",\"shot\":true}\n{\"command\":\"refresh\"}\n",
                          L"--report \"" + folder.wstring() + L"\"");
  EXPECT_EQ(run.exit_code, 1U);
  const std::string page = ReadText(folder / "report.html");
  EXPECT_TRUE(page.contains("Unfinished: line 2, step 2 of 2, has not ended.")) << page;
  EXPECT_TRUE(page.contains("<section id=\"line-1\">"));
  EXPECT_TRUE(
      page.contains("No picture of the browser: Failed to save image! (the picture shows the whole screen)"));
  const std::string asked_for = ReadText(folder_ / "picture-asked-for.json");
  EXPECT_TRUE(asked_for.contains("new\\\\report\",\"file-name\":\"line-1.png\"")) << asked_for;
}

TEST_F(PlayerProgram, KeepsAFailedStepWhenItsPictureCrashesTheLibrary) {
  const Played run = Play("{\"command\":\"click\",\"target\":\"id=crash-in-picture\"}\n", L"--report r");
  EXPECT_EQ(run.exit_code, 1U);
  EXPECT_TRUE(run.errors.contains("after line 1: the library crashed")) << run.errors;
  const std::string page = ReadText(folder_ / "r" / "report.html");
  EXPECT_TRUE(page.contains("Element not found!</span>")) << page;
  EXPECT_TRUE(page.contains("<dt>the library noted</dt><dd>Really é?</dd>")) << page;
  EXPECT_TRUE(page.contains("1 of 1 steps have ended")) << page;
}

TEST_F(PlayerProgram, SavesTheScreenWhereTheBrowserIsLost) {
  Play("{\"command\":\"gettext\",\"shot\":true}\n", L"--report r");
  EXPECT_TRUE(ReadText(folder_ / "r" / "line-1.png").starts_with("\x89PNG"));
  EXPECT_TRUE(ReadText(folder_ / "r" / "report.html").contains("<img alt=\"The browser after this step\""));
}

TEST_F(PlayerProgram, PlaysWhatAPipeHolds) {
  const std::wstring dll = L" --dll \"" + BesideThisProgram(L"fake_quillmate.dll").wstring() + L"\"";
  input_ = "{\"command\":\"gettext\"}\n";
  EXPECT_EQ(Start(L"-" + dll).exit_code, 0U);
  input_ = "# nothing\n";
  const Played empty = Start(L"-" + dll);
  EXPECT_EQ(empty.exit_code, 2U);
  EXPECT_TRUE(empty.errors.contains("-: no steps")) << empty.errors;
}

TEST_F(PlayerProgram, ServesTextsOfBothEncodingsInUtf8AndNamesTheCommandOfACrash) {
  const std::wstring serve = L"--serve --dll \"" + BesideThisProgram(L"fake_quillmate.dll").wstring() + L"\"";
  input_ = R"({"id":1,"command":"gettext"}
{"id":2,"command":"gettable"}
{"id":3,"command":"currenturl"}
{"id":4,"command":"type_m","target":"id=a","value":"é确😀"}
{"id":5,"command":"click"}
)";
  const Played run = Start(serve);
  EXPECT_EQ(run.exit_code, 0U) << run.errors;
  for (const std::string& part :
       {R"({"id":1,"success":true,"result":")" + AnsiText() + "\"", std::string(R"("result":[[0],["é确"]])"),
        std::string(R"("result":"file:///C:/é确.html")"),
        std::string(R"({"id":4,"success":true,"result":true)"), std::string(R"("notes":["Really é?"]})")})
    EXPECT_TRUE(run.out.contains(part)) << run.out;

  for (const auto& [command, what] : {std::pair("refresh", "the library crashed (exception 0xC0000005)"),
                                      std::pair("back", "the library ended the process")}) {
    input_ = "{\"id\":\"x\",\"command\":\"" + std::string(command) + "\"}\n";
    const Played crashed = Start(serve);
    EXPECT_EQ(crashed.exit_code, 1U);
    EXPECT_TRUE(crashed.out.ends_with("\n{\"id\":\"x\",\"success\":false,\"result\":0,\"log\":\"" +
                                      std::string(command) + ": " + what + "\",\"crashed\":true}\n"))
        << crashed.out;
  }
}

TEST_F(PlayerProgram, TellsTheStepInWhichTheLibraryBroke) {
  struct Row {
    std::string command, message;
  };
  const Row rows[] = {
      {"quit", "the library answered a null pointer"},
      {"refresh", "line 2: refresh: the library crashed (exception 0xC0000005)"},
      {"back", "line 2: back: the library ended the process"},
  };
  for (const Row& row : rows) {
    const Played run = Play("{\"command\":\"gettext\"}\n{\"command\":\"" + row.command + "\"}\n");
    EXPECT_EQ(run.exit_code, 1U) << row.command;
    EXPECT_TRUE(run.out.starts_with("line 1  gettext")) << run.out;
    EXPECT_TRUE((run.out + run.errors).contains(row.message)) << run.out << run.errors;
  }
}

// Sets a number of this user's registry for the time of a test.
class UserSetting {
 public:
  UserSetting(const wchar_t* key, const wchar_t* name, DWORD value) : key_(key), name_(name) {
    EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_DWORD, &value, sizeof value), ERROR_SUCCESS);
  }
  ~UserSetting() { RegDeleteKeyValueW(HKEY_CURRENT_USER, key_, name_); }
  UserSetting(const UserSetting&) = delete;
  UserSetting& operator=(const UserSetting&) = delete;

 private:
  const wchar_t* key_;
  const wchar_t* name_;
};

TEST_F(PlayerProgram, ExaminesTheMachineThatItRunsOn) {
  const UserSetting zoom(L"Software\\Microsoft\\Internet Explorer\\Zoom", L"ZoomFactor", 125'000);
  const UserSetting zone(L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Zones\\3",
                         L"2500", 3);
  const UserSetting edge(L"Software\\Policies\\Microsoft\\Edge", L"InternetExplorerSetForegroundWhenActive",
                         1);
  // This test is the other robot.
  fs::copy_file(BesideThisProgram(L"fake_quillmate.dll"), folder_ / "quillmate.dll");
  const HMODULE library = LoadLibraryW((folder_ / "quillmate.dll").c_str());
  const Played run = Start(L"--doctor");
  FreeLibrary(library);
  for (const std::string_view part :
       {"ok       desktop ", "with a zoom of 125 %",
        "off in others (local intranet, trusted sites, internet)", "A policy brings Edge to the front",
        "\"player_program_test.exe\"", "ok       code-page "})
    EXPECT_TRUE(run.out.contains(part)) << part << "\n" << run.out;
  EXPECT_FALSE(Start(L"--doctor --json").out.contains("player_program_test.exe"));
}

}  // namespace

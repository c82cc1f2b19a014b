#include "shell/command_line.h"

#include <optional>

#include "com/encoding.h"
#include "dom/unknown_answers.h"

namespace testbrowser::shell {
namespace {

using Purpose = CommandLine::Purpose;

class Parser {
 public:
  explicit Parser(const std::vector<std::wstring>& arguments) : arguments_(arguments) {}

  CommandLine Parse() {
    while (next_ < arguments_.size()) {
      if (Take(arguments_[next_++])) continue;
      result_.purpose = Purpose::kMistake;
      break;
    }
    return result_;
  }

 private:
  bool Take(const std::wstring& argument) {
    if (argument == L"--register") return Set(Purpose::kRegister);
    if (argument == L"-ShellWindows") return Set(Purpose::kServeWindows);
    // COM adds it to whatever command line is registered.
    if (argument == L"-Embedding") {
      result_.started_by_com = true;
      return result_.purpose == Purpose::kServeWindows || Set(Purpose::kServeBrowser);
    }
    if (argument == L"--hidden") return result_.hidden = true;
    if (argument == L"--shell") return TakeShell(Value());
    if (argument == L"--answer") return TakeAnswer(Value());
    if (argument == L"--title-suffix") return TakeSuffix(Value());
    if (argument == L"--switch") return TakeSwitch(Value());
    if (argument.starts_with(L"-")) return false;
    result_.address = argument;
    return true;
  }
  bool Set(Purpose purpose) {
    result_.purpose = purpose;
    return true;
  }
  std::optional<std::wstring> Value() {
    if (next_ == arguments_.size()) return std::nullopt;
    return arguments_[next_++];
  }
  bool TakeShell(const std::optional<std::wstring>& name) {
    if (name != L"ie" && name != L"hosted") return false;
    result_.hosted = name == L"hosted";
    return true;
  }
  bool TakeSuffix(const std::optional<std::wstring>& suffix) {
    result_.title_suffix = suffix.value_or(L"");
    return suffix.has_value();
  }
  static bool TakeAnswer(const std::optional<std::wstring>& choice) {
    return choice && dom::ChooseAnswer(quillmate::com::ToUtf8(*choice));
  }
  bool TakeSwitch(const std::optional<std::wstring>& setting) {
    if (!setting || !setting->contains(L'=')) return false;
    result_.switches.push_back(*setting);
    return true;
  }

  const std::vector<std::wstring>& arguments_;
  std::size_t next_ = 0;
  CommandLine result_;
};

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) { return Parser(arguments).Parse(); }

}  // namespace testbrowser::shell

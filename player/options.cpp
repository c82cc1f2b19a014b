#include "options.h"

#include <map>

namespace quillmate::player {
namespace {

class Parser {
 public:
  explicit Parser(std::span<const std::string> arguments) : arguments_(arguments) {}

  std::expected<Options, std::string> Parse() {
    while (error_.empty() && next_ < arguments_.size()) ReadArgument(arguments_[next_++]);
    if (error_.empty() && !options_.help && !options_.guard_browsers) Check();
    if (!error_.empty()) return std::unexpected(std::move(error_));
    return std::move(options_);
  }

 private:
  void Check() {
    const bool has_script = !options_.script.empty();
    const bool plays =
        has_script || options_.keep_going || !options_.report.empty() || !options_.variables.empty();
    if (options_.doctor) {
      if (plays || options_.serve || !options_.dll.empty()) error_ = "--doctor takes --json alone";
    } else if (options_.serve && (plays || options_.json)) {
      error_ = "--serve takes --dll, --shots and --close-browsers alone";
    } else if (!options_.serve && (!options_.shots.empty() || options_.close_browsers)) {
      error_ = "--shots and --close-browsers belong to --serve";
    } else if (!options_.serve && !has_script) {
      error_ = "no script is given";
    }
  }

  void ReadArgument(const std::string& argument) {
    const std::map<std::string_view, bool*> flags = {{"--json", &options_.json},
                                                     {"--keep-going", &options_.keep_going},
                                                     {"--serve", &options_.serve},
                                                     {"--doctor", &options_.doctor},
                                                     {"--close-browsers", &options_.close_browsers},
                                                     {"--guard-browsers", &options_.guard_browsers},
                                                     {"--help", &options_.help},
                                                     {"-h", &options_.help}};
    const std::map<std::string_view, std::string*> texts = {
        {"--dll", &options_.dll}, {"--report", &options_.report}, {"--shots", &options_.shots}};
    if (only_script_left_) return ReadScript(argument);
    if (const auto flag = flags.find(argument); flag != flags.end()) return SetFlag(argument, *flag->second);
    if (const auto text = texts.find(argument); text != texts.end()) return ReadText(argument, *text->second);
    if (argument == "--set") return ReadVariable();
    if (argument == "--") {
      only_script_left_ = true;
    } else if (argument.starts_with("-") && argument != "-") {
      error_ = "unknown option " + argument;
    } else {
      ReadScript(argument);
    }
  }

  void ReadScript(const std::string& argument) {
    if (!options_.script.empty()) error_ = "more than one script: " + options_.script + ", " + argument;
    options_.script = argument;
  }

  void SetFlag(const std::string& name, bool& flag) {
    if (flag) error_ = name + " is given twice";
    flag = true;
  }

  void ReadText(const std::string& name, std::string& text) {
    if (!text.empty()) error_ = name + " is given twice";
    text = Value(name);
    if (error_.empty() && text.empty()) error_ = name + " is empty";
  }

  void ReadVariable() {
    const std::string pair = Value("--set");
    if (!error_.empty()) return;
    const std::size_t equals = pair.find('=');
    const std::string name = pair.substr(0, equals);
    if (equals == std::string::npos || !IsVariableName(name)) {
      error_ = "--set takes NAME=VALUE, not " + pair;
    } else if (!options_.variables.emplace(name, pair.substr(equals + 1)).second) {
      error_ = "--set " + name + " is given twice";
    }
  }

  std::string Value(const std::string& name) {
    if (next_ < arguments_.size()) return arguments_[next_++];
    error_ = name + " needs a value";
    return {};
  }

  std::span<const std::string> arguments_;
  std::size_t next_ = 0;
  bool only_script_left_ = false;
  Options options_;
  std::string error_;
};

}  // namespace

std::expected<Options, std::string> ParseOptions(std::span<const std::string> arguments) {
  return Parser(arguments).Parse();
}

const std::string_view kHelp = R"(usage: quillmate-play SCRIPT.jsonl [OPTIONS]
       quillmate-play --doctor [--json]
       quillmate-play --serve [--shots DIR] [--close-browsers] [--dll PATH]

Plays a script of Quillmate commands, one JSON object a line, from a file or with "-" from standard input:

  # comments and blank lines are skipped
  {"command": "open", "target": "${PAGE}"}
  {"command": "gettext", "target": "id=total", "expect": {"result": "84.50"}}
  {"command": "click", "target": "id=gone", "expect": {"success": false, "log": "Element not found!"}}

"command" names the command, every other string is one of its parameters. A step is as expected when the
envelope holds what "expect" says ("success", "result", "log", each only if given); without "expect", when the
command succeeds. "shot": true puts a picture of the browser after the step into the report.

  --set NAME=VALUE  fill in ${NAME} in the script's texts; may be given for many names
  --report DIR      write DIR/report.html, a page about the run, while it runs
  --json            print one object a step: {"line":3,"command":"click","envelope":{...},"ms":41}
  --keep-going      play on after a step that failed
  --dll PATH        load this library instead of quillmate.dll beside this program
  --                the script's name follows, though it begins with "-"
  --help            print this text

With --doctor, says in plain words whether this machine can run a robot and what to do where it cannot; exit
code 1 when it cannot.

With --serve, carries out requests from standard input, one JSON object a line, and answers each in a line:

  {"id": 1, "command": "click", "target": "id=ok", "time-out": 5000}
  {"id":1,"success":true,"result":"","log":"","ms":41}

  --shots DIR       keep a picture after each failure
  --close-browsers  close the browsers that this process has opened, whatever ends it

Output is UTF-8. Exit code: 0 all steps as expected, 1 a step failed, 2 the script or the call is wrong.
)";

}  // namespace quillmate::player

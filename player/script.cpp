#include "script.h"

#include <algorithm>

#include "utf8.h"

namespace quillmate::player {
namespace {

// Reads the object of one line. Its methods return false after they have set the error.
class LineReader {
 public:
  LineReader(std::string_view text, int line, const Variables& variables)
      : text_(text), variables_(variables) {
    step_.line = line;
    error_.line = line;
  }

  std::expected<Step, ScriptError> Read() {
    if (!ReadObject()) return std::unexpected(std::move(error_));
    return std::move(step_);
  }

 private:
  bool Fail(std::size_t offset, std::string message) {
    error_.column = ColumnOf(text_, std::min(offset, text_.size()));
    error_.message = std::move(message);
    return false;
  }

  bool ReadObject() {
    const std::size_t start = text_.find_first_not_of(" \t");
    if (const std::size_t bad = FindInvalidUtf8(text_); bad != std::string_view::npos)
      return Fail(bad, "not valid UTF-8");
    if (const std::size_t zero = text_.find('\0'); zero != std::string_view::npos)
      return Fail(zero, "a zero byte in the text");
    const std::string terminated(text_);
    const char* end = nullptr;
    const JsonPtr object(cJSON_ParseWithLengthOpts(terminated.c_str(), terminated.size() + 1, &end, true));
    if (!object) return Fail(static_cast<std::size_t>(end - terminated.c_str()), "not valid JSON");
    if (!cJSON_IsObject(object.get())) return Fail(start, "a step is a JSON object");
    if (const std::size_t zero = FindEscapedZero(text_); zero != std::string_view::npos)
      return Fail(zero, "a text cannot hold the character \\u0000");
    return ReadMembers(object.get(), start);
  }

  bool ReadMembers(const cJSON* object, std::size_t start) {
    const std::vector<MemberOffsets> offsets = FindMembers(text_);
    std::size_t index = 0;
    for (const cJSON* member = object->child; member != nullptr; member = member->next, ++index) {
      for (const cJSON* earlier = object->child; earlier != member; earlier = earlier->next) {
        if (std::string_view(earlier->string) == member->string)
          return Fail(offsets[index].name, Quoted(member->string) + " is given twice");
      }
      if (!ReadMember(member, offsets[index].value)) return false;
    }
    return !step_.command.empty() || Fail(start, "a step needs a \"command\"");
  }

  bool ReadMember(const cJSON* member, std::size_t offset) {
    const std::string_view name = member->string;
    if (name == "command") return ReadCommand(member, offset);
    if (name == "expect") return ReadExpectation(member, offset);
    if (name == "shot") {
      step_.shot = cJSON_IsTrue(member) != 0;
      return cJSON_IsBool(member) != 0 || Fail(offset, "\"shot\" is true or false");
    }
    if (!cJSON_IsString(member))
      return Fail(offset, Quoted(name) + " is no string: every parameter of a command is one");
    auto value = Substituted(member->valuestring, offset);
    if (!value) return false;
    step_.parameters.emplace_back(name, *std::move(value));
    return true;
  }

  bool ReadCommand(const cJSON* member, std::size_t offset) {
    if (!cJSON_IsString(member) || *member->valuestring == '\0')
      return Fail(offset, "\"command\" is the name of a command");
    auto command = Substituted(member->valuestring, offset);
    if (!command) return false;
    step_.command = *std::move(command);
    step_.command_column = ColumnOf(text_, offset);
    return true;
  }

  bool ReadExpectation(const cJSON* object, std::size_t offset) {
    if (!cJSON_IsObject(object)) return Fail(offset, "\"expect\" is an object");
    Expectation& expect = step_.expect.emplace();
    for (const cJSON* member = object->child; member != nullptr; member = member->next) {
      const std::string_view name = member->string;
      if (name == "success" && cJSON_IsBool(member)) {
        expect.success = cJSON_IsTrue(member) != 0;
      } else if (name == "result") {
        expect.result.reset(cJSON_Duplicate(member, true));
        if (!SubstituteTree(expect.result.get(), offset)) return false;
      } else if (name == "log" && cJSON_IsString(member)) {
        expect.log = Substituted(member->valuestring, offset);
        if (!expect.log) return false;
      } else {
        return Fail(offset, "\"expect\" cannot hold " + Quoted(name) + ": " + PrintCompact(member));
      }
    }
    return true;
  }

  bool SubstituteTree(cJSON* item, std::size_t offset) {
    if (cJSON_IsString(item)) {
      const auto text = Substituted(item->valuestring, offset);
      if (!text) return false;
      cJSON_SetValuestring(item, text->c_str());
    }
    for (cJSON* child = item->child; child != nullptr; child = child->next) {
      if (!SubstituteTree(child, offset)) return false;
    }
    return true;
  }

  std::optional<std::string> Substituted(std::string_view text, std::size_t offset) {
    auto filled = Substitute(text, variables_);
    if (filled) return *std::move(filled);
    const std::string& name = filled.error();
    const std::size_t where = text_.find("${" + name, offset);
    Fail(where == std::string_view::npos ? offset : where,
         "${" + name + "} has no value: give --set " + name + "=TEXT");
    return std::nullopt;
  }

  static std::string Quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

  std::string_view text_;
  const Variables& variables_;
  Step step_;
  ScriptError error_;
};

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::string Step::ParameterText() const {
  const JsonPtr object(cJSON_CreateObject());
  for (const auto& [name, value] : parameters)
    cJSON_AddStringToObject(object.get(), name.c_str(), value.c_str());
  return PrintCompact(object.get());
}

std::string_view Step::Parameter(std::string_view name) const {
  const auto found = std::ranges::find(parameters, name, &std::pair<std::string, std::string>::first);
  return found == parameters.end() ? std::string_view() : found->second;
}

std::string_view Step::Subject() const {
  for (const std::string_view name : {"target", "by", "value"}) {
    if (!Parameter(name).empty()) return Parameter(name);
  }
  return {};
}

std::expected<std::vector<Step>, ScriptError> ParseScript(std::string_view text, const Variables& variables) {
  static constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<Step> steps;
  for (int number = 1; !text.empty(); ++number) {
    const std::string_view line = TakeLine(text);
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string_view::npos || line[start] == '#') continue;
    auto step = LineReader(line, number, variables).Read();
    if (!step) return std::unexpected(std::move(step.error()));
    steps.push_back(*std::move(step));
  }
  return steps;
}

}  // namespace quillmate::player

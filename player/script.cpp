#include "script.h"

#include <algorithm>

#include "command_table.h"
#include "json_line.h"
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

  bool Fail(LineError error) { return Fail(error.offset, std::move(error.message)); }

  bool ReadObject() {
    auto line = ReadLineObject(text_, "a step");
    if (!line) return Fail(std::move(line.error()));
    std::size_t index = 0;
    for (const cJSON* member = line->object->child; member != nullptr; member = member->next, ++index) {
      if (!ReadMember(member, line->offsets[index])) return false;
    }
    return !step_.command.empty() || Fail(text_.find('{'), "a step needs a \"command\"");
  }

  bool ReadMember(const cJSON* member, const MemberOffsets& offsets) {
    const std::string_view name = member->string;
    const std::size_t offset = offsets.value;
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
    step_.parameters.push_back({std::string(name), *std::move(value), ColumnOf(text_, offsets.name)});
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
    std::vector<MemberOffsets> offsets = FindMembers(text_.substr(offset));
    for (MemberOffsets& member : offsets) member = {member.name + offset, member.value + offset};
    if (auto checked = CheckNames(object, offsets); !checked) return Fail(std::move(checked.error()));
    step_.expect.emplace();
    std::size_t index = 0;
    for (const cJSON* member = object->child; member != nullptr; member = member->next, ++index) {
      if (!ReadExpected(member, offsets[index])) return false;
    }
    return true;
  }

  bool ReadExpected(const cJSON* member, const MemberOffsets& offsets) {
    const std::string_view name = member->string;
    if (name == "success" && cJSON_IsBool(member)) {
      step_.expect->success = cJSON_IsTrue(member) != 0;
      return true;
    }
    if (name == "result") {
      step_.expect->result.reset(cJSON_Duplicate(member, true));
      return SubstituteTree(step_.expect->result.get(), offsets.value);
    }
    if (name == "log" && cJSON_IsString(member)) {
      step_.expect->log = Substituted(member->valuestring, offsets.value);
      return step_.expect->log.has_value();
    }
    return Fail(offsets.name, "\"expect\" cannot hold " + Quoted(name) + ": " + PrintCompact(member));
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
    const std::size_t where = text_.find("${" + name + "}", offset);
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
  for (const auto& [name, value, column] : parameters)
    cJSON_AddStringToObject(object.get(), name.c_str(), value.c_str());
  return PrintCompact(object.get());
}

std::string_view Step::Parameter(std::string_view name) const {
  const auto named = [name](const StepParameter& parameter) {
    return SameIgnoringCase(parameter.name, name);
  };
  const auto found = std::ranges::find_if(parameters, named);
  return found == parameters.end() ? std::string_view() : found->value;
}

std::string_view Step::Subject() const {
  // The target of this command is the control that turns the table's pages.
  if (command == "gettable" && !Parameter("by").empty()) return Parameter("by");
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

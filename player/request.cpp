#include "request.h"

#include <array>
#include <cmath>

#include "json_line.h"
#include "utf8.h"

namespace quillmate::player {
namespace {

constexpr double kLongestTimeOut = 86'400'000;  // milliseconds: a day

// Reads the object of one request. Its methods return false after they have set the error.
class RequestReader {
 public:
  RequestReader(std::string_view text, int number) : text_(text) { request_.step.line = number; }

  std::expected<Request, BadRequest> Read(const CommandHost& host) {
    if (!ReadObject() || !Check(host)) return std::unexpected(std::move(error_));
    return std::move(request_);
  }

 private:
  bool Fail(std::size_t offset, std::string message) {
    return FailAt(ColumnOf(text_, std::min(offset, text_.size())), std::move(message));
  }

  bool FailAt(int column, std::string message) {
    error_ = {std::move(request_.id), column, std::move(message)};
    return false;
  }

  bool ReadObject() {
    auto line = ReadLineObject(text_, "a request");
    if (!line) return Fail(line.error().offset, std::move(line.error().message));
    // First of all, so that an error names it wherever it stands.
    request_.id.reset(cJSON_DetachItemFromObjectCaseSensitive(line->object.get(), "id"));
    std::size_t index = 0;
    for (const cJSON* member = line->object->child; member != nullptr; member = member->next, ++index) {
      if (IsId(line->offsets[index])) ++index;
      if (!ReadMember(member, line->offsets[index])) return false;
    }
    return !request_.step.command.empty() || Fail(text_.find('{'), "a request needs a \"command\"");
  }

  bool IsId(const MemberOffsets& offsets) const {
    return request_.id && text_.substr(offsets.name, 4) == "\"id\"";
  }

  bool ReadMember(const cJSON* member, const MemberOffsets& offsets) {
    const std::string_view name = member->string;
    if (name == "command") return ReadCommand(member, offsets.value);
    if (name == "time-out") return ReadTimeOut(member, offsets.value);
    if (!cJSON_IsString(member))
      return Fail(offsets.value,
                  "\"" + std::string(name) + "\" is no string: every parameter of a command is one");
    request_.step.parameters.push_back(
        {std::string(name), member->valuestring, ColumnOf(text_, offsets.name)});
    return true;
  }

  bool ReadCommand(const cJSON* member, std::size_t offset) {
    if (!cJSON_IsString(member) || *member->valuestring == '\0')
      return Fail(offset, "\"command\" is the name of a command");
    request_.step.command = member->valuestring;
    request_.step.command_column = ColumnOf(text_, offset);
    return true;
  }

  bool ReadTimeOut(const cJSON* member, std::size_t offset) {
    const double value = cJSON_IsNumber(member) ? member->valuedouble : 0;
    if (!(value >= 1 && value <= kLongestTimeOut) || value != std::floor(value))
      return Fail(offset, "\"time-out\" is a whole number of milliseconds, from 1 to 86400000");
    request_.time_out = std::chrono::milliseconds(static_cast<long long>(value));
    return true;
  }

  bool Check(const CommandHost& host) {
    const auto wrong = FindWrongStep({&request_.step, 1}, host);
    return !wrong || FailAt(wrong->column, wrong->message);
  }

  std::string_view text_;
  Request request_;
  BadRequest error_;
};

}  // namespace

std::expected<Request, BadRequest> ReadRequest(std::string_view line, int number, const CommandHost& host) {
  return RequestReader(line, number).Read(host);
}

}  // namespace quillmate::player

#include "server.h"

#include "command_table.h"

namespace quillmate::player {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t") == std::string_view::npos; }

void AddText(cJSON* object, const char* name, const std::string& text) {
  cJSON_AddStringToObject(object, name, text.c_str());
}

void AddId(cJSON* object, const cJSON* id) {
  cJSON_AddItemToObject(object, "id", id == nullptr ? cJSON_CreateNull() : cJSON_Duplicate(id, true));
}

// The result as programs want it: the text of a table becomes the table.
cJSON* ResultOf(const Step& step, const Envelope& envelope) {
  const cJSON* const result = envelope.result();
  if (result == nullptr) return cJSON_CreateNull();
  cJSON* const table =
      step.command == "gettable" && cJSON_IsString(result) ? cJSON_Parse(result->valuestring) : nullptr;
  return table != nullptr ? table : cJSON_Duplicate(result, true);
}

void AddOutcome(cJSON* answer, bool success, cJSON* result, const std::string& log) {
  cJSON_AddBoolToObject(answer, "success", success);
  cJSON_AddItemToObject(answer, "result", result);
  AddText(answer, "log", log);
}

void AddFailure(cJSON* answer, const std::string& log) {
  AddOutcome(answer, false, cJSON_CreateNumber(0), log);
}

void AddEnvelope(cJSON* answer, const Step& step, const CallResult& result, const AnsiDecoder& decode) {
  if (!result.answer) return AddFailure(answer, "the library answered a null pointer");
  const auto envelope = Envelope::Read(step.command, *result.answer, decode);
  if (!envelope) return AddFailure(answer, "the answer is no envelope: " + decode(*result.answer));
  AddOutcome(answer, envelope->success(), ResultOf(step, *envelope), std::string(envelope->log()));
}

void AddNotes(cJSON* answer, const std::vector<std::string>& notes) {
  if (notes.empty()) return;
  cJSON* const list = cJSON_AddArrayToObject(answer, "notes");
  for (const std::string& note : notes) cJSON_AddItemToArray(list, cJSON_CreateString(note.c_str()));
}

void AddLate(cJSON* answer, const CallResult& result, milliseconds waited) {
  const std::string time = std::to_string(waited.count()) + " ms";
  AddFailure(answer,
             result.state == CallResult::State::kRunning
                 ? "no answer within " + time + "; the command goes on in the library"
                 : "not begun within " + time + ": the library is still busy with " + result.busy_with);
  cJSON_AddTrueToObject(answer, "timed-out");
}

}  // namespace

void Server::Run() {
  Hello();
  while (out_.Good()) {
    std::optional<InputLine> line = input_.Next();
    if (!line) return;
    if (line->number == 1 && line->text.starts_with(kByteOrderMark))
      line->text.erase(0, kByteOrderMark.size());
    if (line->too_long || !IsBlank(line->text)) Serve(*line);
  }
}

void Server::Hello() {
  const JsonPtr hello(cJSON_CreateObject());
  AddText(hello.get(), "hello", "quillmate");
  AddText(hello.get(), "version", settings_.version);
  cJSON_AddNumberToObject(hello.get(), "protocol", kProtocol);
  cJSON_AddNumberToObject(hello.get(), "code-page", settings_.code_page);
  cJSON* const commands = cJSON_AddObjectToObject(hello.get(), "commands");
  for (const CommandInfo& command : AllCommands()) {
    const std::string name(command.name);
    if (!host_.Has(name)) continue;
    cJSON* const parameters = cJSON_AddArrayToObject(commands, name.c_str());
    for (const std::string_view parameter : command.parameters)
      cJSON_AddItemToArray(parameters, cJSON_CreateString(std::string(parameter).c_str()));
  }
  Send(hello.get());
}

void Server::Serve(const InputLine& line) {
  if (line.too_long) return Refuse(line, {nullptr, 1, "the line is too long"});
  const auto request = ReadRequest(line.text, line.number, host_);
  if (!request) return Refuse(line, request.error());
  CarryOut(*request);
}

void Server::Refuse(const InputLine& line, const BadRequest& bad) {
  const JsonPtr answer(cJSON_CreateObject());
  AddId(answer.get(), bad.id.get());
  cJSON_AddFalseToObject(answer.get(), "success");
  AddText(answer.get(), "error", bad.message);
  cJSON_AddNumberToObject(answer.get(), "line", line.number);
  cJSON_AddNumberToObject(answer.get(), "column", bad.column);
  Send(answer.get());
}

void Server::CarryOut(const Request& request) {
  const auto start = steady_clock::now();
  const CallResult result = Call(request);
  const auto time = std::chrono::round<milliseconds>(steady_clock::now() - start);
  const bool returned = result.state == CallResult::State::kReturned;
  const JsonPtr answer(cJSON_CreateObject());
  AddId(answer.get(), request.id.get());
  if (returned) {
    AddEnvelope(answer.get(), request.step, result, settings_.decode);
  } else {
    AddLate(answer.get(), result, time);
  }
  cJSON_AddNumberToObject(answer.get(), "ms", static_cast<double>(time.count()));
  AddNotes(answer.get(), result.notes);
  settings_.after_call(request.step, returned);
  AddPicture(answer.get(), request.step, returned);
  Send(answer.get());
}

CallResult Server::Call(const Request& request) {
  const auto start = steady_clock::now();
  const auto end = request.time_out ? start + *request.time_out : steady_clock::time_point::max();
  auto end_without_input = steady_clock::time_point::max();
  const CallThread::Deadline deadline = [&] {
    if (end_without_input == steady_clock::time_point::max() && settings_.input_ended())
      end_without_input = steady_clock::now() + settings_.patience;
    return std::min(end, end_without_input);
  };
  return calls_.Make({PrintCompact(request.id.get()), request.step.command, request.step.ParameterText()},
                     deadline);
}

void Server::AddPicture(cJSON* answer, const Step& step, bool ask_library) {
  const bool failed = !cJSON_IsTrue(cJSON_GetObjectItemCaseSensitive(answer, "success"));
  if (!failed || !settings_.save_picture) return;
  const auto [path, problem] =
      settings_.save_picture("request-" + std::to_string(step.line) + ".png", ask_library);
  if (!path.empty()) AddText(answer, "picture", path);
  if (!problem.empty()) AddText(answer, "picture-problem", problem);
}

std::pair<std::string, std::string> LastLine(const struct Call& call) {
  return {R"({"id":)" + (call.id.empty() ? "null" : call.id) + R"(,"success":false,"result":0,"log":")" +
              call.command + ": ",
          R"(","crashed":true})"
          "\n"};
}

}  // namespace quillmate::player

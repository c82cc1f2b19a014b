// Loading and calling.
#include "support/library.h"

#include <windows.h>
#include <chrono>
#include <ostream>
#include <stdexcept>

#include "com/json.h"
#include "support/under_test.h"

namespace quillmate::test {
namespace {

using com::JsonPtr;
using com::JsonText;
using Command = const char* (*)(const char*);

Command FindCommand(const char* name) {
  // Never freed: a worker may still be in it when the test ends.
  static const HMODULE library = LoadLibraryW(L"quillmate.dll");
  if (library == nullptr) throw std::runtime_error("quillmate.dll cannot be loaded");
  const auto address = GetProcAddress(library, name);
  if (address == nullptr) throw std::runtime_error(std::string("no export ") + name);
  return reinterpret_cast<Command>(reinterpret_cast<void*>(address));
}

std::string PrintJson(const cJSON* item) {
  if (item == nullptr) return {};
  return JsonText(cJSON_PrintUnformatted(item)).get();
}

std::string PrintParameters(Parameters parameters) {
  const JsonPtr object(cJSON_CreateObject());
  for (const auto& [key, value] : parameters)
    cJSON_AddStringToObject(object.get(), key.c_str(), value.c_str());
  return PrintJson(object.get());
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Envelope& envelope) {
  return out << (envelope.success ? "success " : "failure ") << envelope.result << " \"" << envelope.log
             << '"';
}

Envelope Succeeded() { return {true, "true", {}}; }
Envelope Failed(std::string message) { return {false, "0", std::move(message)}; }
Envelope Answered(const std::string& text) {
  return {true, PrintJson(JsonPtr(cJSON_CreateString(text.c_str())).get()), {}};
}
Envelope StillRunning() { return {true, "0", {}}; }

const char* CallRaw(const char* command, const char* text) { return FindCommand(command)(text); }

Envelope Call(const char* command, Parameters parameters) {
  const JsonPtr answer(cJSON_Parse(CallRaw(command, PrintParameters(parameters).c_str())));
  SkipIfInputWasLeftOut();
  const cJSON* log = cJSON_GetObjectItemCaseSensitive(answer.get(), "log");
  return {cJSON_IsTrue(cJSON_GetObjectItemCaseSensitive(answer.get(), "success")) != 0,
          PrintJson(cJSON_GetObjectItemCaseSensitive(answer.get(), "result")),
          cJSON_IsString(log) ? log->valuestring : ""};
}

Timed CallTimed(const char* command, Parameters parameters) {
  const auto begin = std::chrono::steady_clock::now();
  Envelope envelope = Call(command, parameters);
  return {std::move(envelope),
          std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count()};
}

}  // namespace quillmate::test

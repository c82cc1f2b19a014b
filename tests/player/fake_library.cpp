// A library with the look of the real one, for testing the player without a browser.
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace {

bool crashes_in_picture = false;

std::string ToAnsi(std::wstring_view text) {
  std::string bytes(64, '\0');
  const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

const char* Answer(const std::string& result) {
  static std::string answer;
  answer = "{\n\t\"success\":\ttrue,\n\t\"result\":\t" + result + "\n}";
  return answer.c_str();
}

}  // namespace

extern "C" {

// A letter of each code page under test; the other one's turns into a question mark.
__declspec(dllexport) const char* gettext(const char*) { return Answer("\"" + ToAnsi(L"é确") + "\""); }

__declspec(dllexport) const char* gettable(const char*) { return Answer(R"("[[0],[\"é确\"]]")"); }

__declspec(dllexport) const char* currenturl(const char*) { return Answer("\"file:///C:/é确.html\""); }

// Tells whether it was given this text, byte for byte.
__declspec(dllexport) const char* type_m(const char* parameters) {
  return Answer(std::strcmp(parameters, R"({"target":"id=a","value":"é确😀"})") == 0 ? "true" : "false");
}

__declspec(dllexport) const char* click(const char* parameters) {
  OutputDebugStringA((ToAnsi(L"Really \u00e9?") + "\r\n").c_str());
  crashes_in_picture = std::strstr(parameters, "crash-in-picture") != nullptr;
  return "{\"success\":false,\"result\":0,\"log\":\"Element not found!\"}";
}

// Saves what it was given, so that the test sees where a picture was asked for.
__declspec(dllexport) const char* takescreenshot(const char* parameters) {
  if (crashes_in_picture) *static_cast<volatile int*>(nullptr) = 1;
  std::ofstream("picture-asked-for.json") << parameters;
  return "{\"success\":false,\"result\":0,\"log\":\"Failed to save image!\"}";
}

__declspec(dllexport) const char* quit(const char*) { return nullptr; }

__declspec(dllexport) const char* refresh(const char*) {
  *static_cast<volatile int*>(nullptr) = 1;
  return nullptr;
}

__declspec(dllexport) const char* back(const char*) { std::abort(); }

__declspec(dllexport) const char* cJSON_Parse(const char*) { return nullptr; }
}

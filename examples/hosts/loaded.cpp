// A host in C++ that loads the library at run time: opens a page, prints the text of its element "greeting",
// and closes the browser.
// usage: loaded LIBRARY ADDRESS
#include <windows.h>

#include <cstdio>
#include <string>

#include <quillmate.h>

namespace {

// The commands that this host uses, found by their exported names.
struct Commands {
  explicit Commands(HMODULE library)
      : open(QUILLMATE_LOAD(library, open)),
        gettext(QUILLMATE_LOAD(library, gettext)),
        quit(QUILLMATE_LOAD(library, quit)) {}
  bool AreComplete() const { return open != nullptr && gettext != nullptr && quit != nullptr; }

  quillmate_command open;
  quillmate_command gettext;
  quillmate_command quit;
};

// Copies the answer at once: the next command may replace it.
std::string Run(quillmate_command command, const std::string& parameters) {
  const char* answer = command(parameters.c_str());
  return answer != nullptr ? answer : "no memory";
}

bool Succeeded(const std::string& answer) { return answer.find("\"success\":\ttrue") != std::string::npos; }

int ReadGreeting(const Commands& commands, const std::string& address) {
  const std::string opened = Run(commands.open, "{\"target\": \"" + address + "\"}");
  if (!Succeeded(opened)) {
    std::fprintf(stderr, "open: %s\n", opened.c_str());
    return 1;
  }
  const std::string text = Run(commands.gettext, R"({"target": "id=greeting"})");
  std::printf("%s\n", text.c_str());
  return Succeeded(Run(commands.quit, "{}")) && Succeeded(text) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: loaded LIBRARY ADDRESS\n");
    return 2;
  }
  const HMODULE library = LoadLibraryA(argv[1]);
  if (library == nullptr) {
    std::fprintf(stderr, "%s cannot be loaded\n", argv[1]);
    return 1;
  }
  const Commands commands(library);
  const int status = commands.AreComplete() ? ReadGreeting(commands, argv[2]) : 1;
  FreeLibrary(library);
  return status;
}

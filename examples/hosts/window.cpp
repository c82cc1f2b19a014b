// A host with a window that keeps painting while a command waits: the commands run on a worker thread, one
// after the other, and post their answers to the window. The page adds its element "late" three seconds after
// it was loaded.
// usage: window ADDRESS   prints the answers and how often the window was painted meanwhile
#include <windows.h>

#include <cstdio>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include <quillmate.h>

namespace {

constexpr UINT kAnswer = WM_APP;        // the mailbox holds an answer
constexpr UINT kFinished = WM_APP + 1;  // the worker has issued its last command
constexpr UINT_PTR kRepaintTimer = 1;
constexpr UINT kRepaintMs = 100;

int paints = 0;
int answers = 0;
int failures = 0;

// What the worker has for the window.
class Mailbox {
 public:
  void Put(std::string answer) {
    const std::lock_guard lock(mutex_);
    answers_.push_back(std::move(answer));
  }
  std::string Take() {
    const std::lock_guard lock(mutex_);
    std::string first = std::move(answers_.front());
    answers_.pop_front();
    return first;
  }

 private:
  std::mutex mutex_;
  std::deque<std::string> answers_;
};
Mailbox mailbox;

void Report(const std::string& answer) {
  ++answers;
  if (answer.find("\"success\":\ttrue") == std::string::npos) ++failures;
  std::printf("%s\n", answer.c_str());
}

void Paint(HWND window) {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(window, &paint);
  const std::string text = std::to_string(++paints);
  TextOutA(dc, 10, 10, text.c_str(), static_cast<int>(text.size()));
  EndPaint(window, &paint);
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      return Paint(window), 0;
    case WM_TIMER:
      return InvalidateRect(window, nullptr, TRUE), 0;
    case kAnswer:
      return Report(mailbox.Take()), 0;
    case kFinished:
      return PostQuitMessage(0), 0;
    default:
      return DefWindowProcW(window, message, wparam, lparam);
  }
}

HWND OpenWindow(HINSTANCE program) {
  WNDCLASSW description = {};
  description.lpfnWndProc = WindowProcedure;
  description.hInstance = program;
  description.lpszClassName = L"QuillmateSampleHost";
  RegisterClassW(&description);
  return CreateWindowW(description.lpszClassName, L"Sample host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                       100, nullptr, nullptr, program, nullptr);
}

// Posted, not sent: the worker does not wait for the window.
void Run(HWND window, quillmate_command command, const std::string& parameters) {
  const char* answer = command(parameters.c_str());
  mailbox.Put(answer != nullptr ? answer : "no memory");
  PostMessageW(window, kAnswer, 0, 0);
}

void RunCommands(HWND window, const std::string& address) {
  Run(window, quillmate_open, "{\"target\": \"" + address + "\"}");
  Run(window, quillmate_waitshow, R"({"target": "id=late"})");
  Run(window, quillmate_gettext, R"({"target": "id=late"})");
  Run(window, quillmate_quit, "{}");
  PostMessageW(window, kFinished, 0, 0);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: window ADDRESS\n");
    return 2;
  }
  HWND window = OpenWindow(GetModuleHandleW(nullptr));
  if (window == nullptr || SetTimer(window, kRepaintTimer, kRepaintMs, nullptr) == 0) return 1;
  std::thread worker(RunCommands, window, std::string(argv[1]));
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  worker.join();
  std::printf("%d answers, %d failures, painted %d times\n", answers, failures, paints);
  return failures == 0 && answers == 4 ? 0 : 1;
}

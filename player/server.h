// Carries out requests, one JSON object a line, and answers each in a line.
#pragma once

#include <functional>
#include <string>

#include "call_thread.h"
#include "line_input.h"
#include "printers.h"
#include "request.h"

namespace quillmate::player {

inline constexpr int kProtocol = 1;

struct ServerSettings {
  std::string version;
  unsigned code_page = 0;
  AnsiDecoder decode;
  /// @return whether whoever sends requests is gone and all of them are read; asked during a call.
  std::function<bool()> input_ended = [] { return false; };
  std::chrono::milliseconds patience{60'000};  ///< with a call, once the input has ended
  /// Where each failure leaves a picture; empty for none.
  /// @param ask_library false while the library is busy.
  /// @return the file's path, empty when there is none, and why it does not show the browser.
  std::function<std::pair<std::string, std::string>(const std::string& name, bool ask_library)> save_picture;
  /// @param returned whether the library has returned from the command.
  std::function<void(const Step&, bool returned)> after_call = [](const Step&, bool) {};
};

class Server {
 public:
  Server(LineInput& input, TextSink& out, CommandHost& host, CallThread& calls, ServerSettings settings)
      : input_(input), out_(out), host_(host), calls_(calls), settings_(std::move(settings)) {}

  /// Says hello and serves until the input ends or nobody takes the answers.
  void Run();

 private:
  void Hello();
  void Serve(const InputLine& line);
  void Refuse(const InputLine& line, const BadRequest& bad);
  void CarryOut(const Request& request);
  CallResult Call(const Request& request);
  void AddPicture(cJSON* answer, const Step& step, bool ask_library);
  void Send(const cJSON* object) { out_.Write(PrintCompact(object) + "\n"); }

  LineInput& input_;
  TextSink& out_;
  CommandHost& host_;
  CallThread& calls_;
  ServerSettings settings_;
};

/// @return the line that a server ends with when the library brings it down, in two parts: what comes between
///   them tells how.
std::pair<std::string, std::string> LastLine(const struct Call& call);

}  // namespace quillmate::player

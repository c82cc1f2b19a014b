// The standard streams, UTF-8 on a console as in a pipe or a file.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "printers.h"

namespace quillmate::player {

/// Unbuffered: what was written stays written when the process crashes.
class StandardStream : public TextSink {
 public:
  explicit StandardStream(HANDLE handle) : handle_(handle) {}
  void Write(std::string_view utf8) override;
  bool Good() const override { return good_; }
  /// @return the console's width; none when the stream is no console.
  std::optional<std::size_t> ConsoleColumns() const;

 private:
  HANDLE handle_;
  bool good_ = true;
};

/// Takes a standard stream away from the processes that this one starts, so that the stream ends with this
/// process.
/// @param which STD_INPUT_HANDLE, STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
/// @return the stream's handle, for this process alone and for as long as it lives.
HANDLE TakeStandardHandle(DWORD which);

/// @return everything up to the end of the standard input.
std::string ReadStandardInput();

}  // namespace quillmate::player

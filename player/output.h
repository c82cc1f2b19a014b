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
  /// @param which STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
  explicit StandardStream(DWORD which) : handle_(GetStdHandle(which)) {}
  void Write(std::string_view utf8) override;
  /// @return the console's width; none when the stream is no console.
  std::optional<std::size_t> ConsoleColumns() const;

 private:
  HANDLE handle_;
};

/// @return everything up to the end of the standard input.
std::string ReadStandardInput();

}  // namespace quillmate::player

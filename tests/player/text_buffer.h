// Keeps what is printed.
#pragma once

#include <string>

#include "printers.h"

namespace quillmate::player {

class TextBuffer : public TextSink {
 public:
  void Write(std::string_view utf8) override { text += utf8; }
  std::string text;
};

}  // namespace quillmate::player

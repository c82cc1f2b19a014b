// What the system's language makes of a message box's texts.
#pragma once

#include <string>

namespace testbrowser::shell {

struct BoxCaptions {
  std::wstring message_title;
  std::wstring prompt_title;
  std::wstring script_prompt;
  std::wstring ok;
  std::wstring cancel;
};

/// The texts that go with an ANSI code page; English where there are no others.
const BoxCaptions& CaptionsFor(unsigned code_page);

}  // namespace testbrowser::shell

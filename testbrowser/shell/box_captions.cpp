#include "shell/box_captions.h"

namespace testbrowser::shell {

const BoxCaptions& CaptionsFor(unsigned code_page) {
  constexpr unsigned kSimplifiedChinese = 936;
  static const BoxCaptions english{L"Message from webpage", L"Explorer User Prompt", L"Script Prompt:", L"OK",
                                   L"Cancel"};
  static const BoxCaptions chinese{L"\u6765\u81ea\u7f51\u9875\u7684\u6d88\u606f",
                                   L"Explorer \u7528\u6237\u63d0\u793a", L"\u811a\u672c\u63d0\u793a:",
                                   L"\u786e\u5b9a", L"\u53d6\u6d88"};
  return code_page == kSimplifiedChinese ? chinese : english;
}

}  // namespace testbrowser::shell

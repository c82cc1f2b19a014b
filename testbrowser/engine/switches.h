// What the real browser does is not known everywhere. A switch chooses between its possible answers: by the
// option
// "--switch NAME=VALUE", or later by the window message "testbrowser switch" (shell/call_filter.h tells how
// to send such). docs/testbrowser.md lists them.
#pragma once

#include <string>
#include <string_view>

namespace testbrowser::engine {

/// @param setting "NAME=VALUE"; "NAME=" goes back to the usual answer.
void SetSwitch(std::string_view setting);
/// @return the switch's value; `usual` when nobody has set it.
std::string SwitchText(std::string_view name, std::string_view usual = {});
int SwitchNumber(std::string_view name, int usual = 0);

}  // namespace testbrowser::engine

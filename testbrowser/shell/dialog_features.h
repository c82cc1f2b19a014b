// showModalDialog's features: where its window stands and how big its page is.
#pragma once

#include <windows.h>
#include <string_view>

namespace testbrowser::shell {

/// @param features "name:value;name=value;…" as the page wrote it, lengths in px.
/// @param opener the opener's window on the screen: the dialog is centred over it unless the features say
/// where.
/// @return the dialog's client area in screen pixels.
RECT DialogClientPlace(std::string_view features, const RECT& opener);

}  // namespace testbrowser::shell

#pragma once

#include <windows.h>

namespace quillmate {

/// Whether a byte of the ANSI code page begins a character of two bytes.
inline bool IsLeadByte(char byte) { return IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(byte)) != FALSE; }

}  // namespace quillmate

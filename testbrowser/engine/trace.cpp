#include "engine/trace.h"

#include <windows.h>
#include <fstream>

namespace testbrowser::engine {

void Trace(const std::string& text) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  char head[64];
  wsprintfA(head, "%02u:%02u:%02u.%03u testbrowser %lu: ", now.wHour, now.wMinute, now.wSecond,
            now.wMilliseconds, GetCurrentProcessId());
  const std::string line = head + text + "\n";
  OutputDebugStringA(line.c_str());
  char folder[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, folder);
  std::ofstream(std::string(folder) + "testbrowser.log", std::ios::binary | std::ios::app) << line;
}

}  // namespace testbrowser::engine

#include "com/poll.h"

#include <windows.h>

namespace quillmate::com {

void Pause(std::chrono::milliseconds time) { Sleep(static_cast<DWORD>(time.count())); }

}  // namespace quillmate::com

#include "com/process.h"

#include <windows.h>
#include <objbase.h>

#include "com/owned.h"

namespace quillmate::com {
namespace {

// A mutex of the system, which can be waited for together with messages. Made as the library is loaded.
const UniqueHandle mutex(CreateMutexW(nullptr, FALSE, nullptr));

bool IsSingleThreaded() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
  return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) && (type == APTTYPE_STA || type == APTTYPE_MAINSTA);
}

/// @return false when the wait failed.
bool WaitInApartment() {
  HANDLE handle = mutex.get();
  DWORD index = 0;
  return SUCCEEDED(CoWaitForMultipleHandles(0, INFINITE, 1, &handle, &index));
}

void WaitWithMessages() {
  HANDLE handle = mutex.get();
  MSG message;
  while (MsgWaitForMultipleObjectsEx(1, &handle, INFINITE, QS_SENDMESSAGE, 0) == WAIT_OBJECT_0 + 1) {
    // Serves what was sent, and takes nothing from the queue.
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

}  // namespace

// A pinned module stays whatever FreeLibrary is called.
void KeepLibraryLoaded() {
  HMODULE library = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<LPCWSTR>(&KeepLibraryLoaded), &library);
}

void Pause(std::chrono::milliseconds time) { Sleep(static_cast<DWORD>(time.count())); }

CommandLock::CommandLock() {
  const DWORD free = WaitForSingleObject(mutex.get(), 0);
  if (free == WAIT_OBJECT_0 || free == WAIT_ABANDONED) return;
  if (!IsSingleThreaded() || !WaitInApartment()) WaitWithMessages();
}

CommandLock::~CommandLock() { ReleaseMutex(mutex.get()); }

}  // namespace quillmate::com

// The page-load wait.
#include "session/page_load.h"

#include <windows.h>

#include "session/current_target.h"

namespace quillmate::session {
namespace {

constexpr int kRounds = 5;
constexpr DWORD kRoundMs = 1000;

bool IsIdle() {
  const WindowHolder* holder = ValidHolder();
  return holder == nullptr || !holder->IsBusy();
}

}  // namespace

bool WaitForPageLoad() {
  if (IsIdle()) return true;
  for (int round = 0; round < kRounds; ++round) {
    Sleep(kRoundMs);
    if (IsIdle()) return true;
  }
  return false;
}

}  // namespace quillmate::session

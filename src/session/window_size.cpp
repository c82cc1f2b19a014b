// Window sizes.
#include "session/window_size.h"

#include <windows.h>
#include <optional>

#include "api/messages.h"
#include "api/validation.h"
#include "session/answering.h"
#include "session/current_target.h"

namespace quillmate::session {
namespace {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words

bool Maximise(HWND window) {
  ShowWindow(window, SW_MAXIMIZE);
  return IsZoomed(window) != FALSE;
}

/// A window that took another size than asked for (its own smallest one, the screen's) has refused.
bool Resize(HWND window, const CoordinatePair& size) {
  if (IsZoomed(window) || IsIconic(window)) ShowWindow(window, SW_RESTORE);
  RECT rect = {};
  return SetWindowPos(window, nullptr, 0, 0, size.x, size.y, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE) &&
         GetWindowRect(window, &rect) && rect.right - rect.left == size.x && rect.bottom - rect.top == size.y;
}

/// @param change gives the window its size and tells whether it took it.
template <class Change>
Result ChangeCurrentWindow(Change change) {
  const WindowHolder* holder = ValidHolder();
  HWND window = holder != nullptr ? GetAncestor(holder->GetWindowHandle(), GA_ROOT) : nullptr;
  if (window == nullptr) return Fail(messages::kBrowserNotFound);
  return AnswersInTime(window) && change(window) ? Done() : Fail(messages::kSelectWindowSizeFail);
}

}  // namespace

Result SizeCurrentWindow(const std::string& size) {
  if (size == "max") return ChangeCurrentWindow(Maximise);
  const auto pair = ParseCoordinatePair(size);
  if (!pair || pair->x < 0 || pair->y < 0) return Fail(messages::kSelectWindowSizeFail);
  return ChangeCurrentWindow([&](HWND window) { return Resize(window, *pair); });
}

}  // namespace quillmate::session

#include "shell/call_filter.h"

#include <objidl.h>
#include <fstream>
#include <string>

#include "com/encoding.h"
#include "dom/com_object.h"
#include "engine/call_fate.h"
#include "engine/switches.h"
#include "shell/call_counts.h"

namespace testbrowser::shell {
namespace {

CallCounts& Counts() {
  static CallCounts counts;
  return counts;
}

std::function<bool()>& RefusesNow() {
  static std::function<bool()> refuses;
  return refuses;
}

/// @return what the filter says of the call; an object that is to refuse is told so. Wine's COM lets a call through
/// that its filter wants to come again later (SERVERCALL_RETRYLATER), so that is an object's answer too: the one that a
/// caller sees who does not try again.
DWORD Refuse(RefusalAnswer answer) {
  switch (answer) {
    case RefusalAnswer::kRetryLater:
      engine::NextCallFate() = engine::CallFate::kRetryLater;
      break;
    case RefusalAnswer::kDisconnected:
      engine::NextCallFate() = engine::CallFate::kDisconnected;
      break;
    case RefusalAnswer::kNull:
      engine::NextCallFate() = engine::CallFate::kNull;
      break;
    case RefusalAnswer::kRejected:
      return SERVERCALL_REJECTED;
  }
  return SERVERCALL_ISHANDLED;
}

/// IMessageFilter with the list of interfaces that ComObject asks for.
class FilterInterface : public IMessageFilter {
 public:
  static constexpr const IID* kInterfaces[] = {&__uuidof(IMessageFilter)};
};

class Filter : public dom::ComObject<FilterInterface> {
 public:
  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO call) override {
    engine::NextCallFate() = engine::CallFate::kAnswered;
    if (call == nullptr) return SERVERCALL_ISHANDLED;
    const bool is_refused = Counts().Note(call->iid, call->wMethod);
    if (is_refused) return Refuse(Counts().answer());
    const bool is_busy = !CallCounts::IsOfCom(call->iid) && RefusesNow() && RefusesNow()();
    return is_busy ? Refuse(RefusalAnswer::kRetryLater) : DWORD{SERVERCALL_ISHANDLED};
  }
  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override {
    return static_cast<DWORD>(-1);  // a refusal by another process is an error, not tried again
  }
  DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override { return PENDINGMSG_WAITDEFPROCESS; }
};

std::wstring AtomText(LPARAM atom) {
  wchar_t text[256] = L"";
  GlobalGetAtomNameW(static_cast<ATOM>(atom), text, static_cast<int>(std::size(text)));
  return text;
}

LRESULT Obey(FilterCommand command, LPARAM argument) {
  CallCounts& counts = Counts();
  switch (command) {
    case FilterCommand::kReset:
      counts.Reset();
      return 0;
    case FilterCommand::kTotal:
      return counts.total();
    case FilterCommand::kRejectNth:
      counts.RejectNth(static_cast<long>(argument), false);
      return 0;
    case FilterCommand::kRejectFrom:
      counts.RejectNth(static_cast<long>(argument), true);
      return 0;
    case FilterCommand::kCount:
      return counts.CountOf(AtomText(argument));
    case FilterCommand::kRejected:
      return counts.rejected();
    case FilterCommand::kAnswer:
      counts.SetAnswer(static_cast<RefusalAnswer>(argument));
      return 0;
    case FilterCommand::kReport: {
      std::ofstream file(AtomText(argument).c_str(), std::ios::binary);
      file << counts.Report();
      return file.good() ? 1 : 0;
    }
  }
  return 0;
}

}  // namespace

CallFilter::CallFilter() {
  quillmate::com::ComPtr<IMessageFilter> before;
  CoRegisterMessageFilter(dom::MakeObject<Filter>().Get(), &before);
}

CallFilter::~CallFilter() {
  quillmate::com::ComPtr<IMessageFilter> ours;
  CoRegisterMessageFilter(nullptr, &ours);
}

void CallFilter::RetryWhile(std::function<bool()> refuses) { RefusesNow() = std::move(refuses); }

std::optional<LRESULT> CallFilter::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  static const UINT steering = RegisterWindowMessageW(L"testbrowser call filter");
  static const UINT switching = RegisterWindowMessageW(L"testbrowser switch");
  if (message == switching) {
    engine::SetSwitch(quillmate::com::ToUtf8(AtomText(static_cast<LPARAM>(wparam))));
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM) { return SendMessageW(window, kSwitchesChanged, 0, 0), TRUE; }, 0);
    return 0;
  }
  if (message != steering) return std::nullopt;
  return Obey(static_cast<FilterCommand>(wparam), lparam);
}

}  // namespace testbrowser::shell

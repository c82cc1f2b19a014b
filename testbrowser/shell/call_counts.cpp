#include "shell/call_counts.h"

#include <objbase.h>

#include "com/encoding.h"

namespace testbrowser::shell {
namespace {

// COM's own calls for more interfaces and for references: not the client's doing, so not in the total.
constexpr IID kRemUnknown{0x00000131, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr unsigned kRemQueryInterface = 3;

std::wstring TextOf(REFIID iid) {
  wchar_t text[40] = L"";
  const int length = StringFromGUID2(iid, text, static_cast<int>(std::size(text)));
  return {text, static_cast<std::size_t>(length > 0 ? length - 1 : 0)};
}

std::wstring RegisteredName(const std::wstring& iid) {
  wchar_t name[128] = L"";
  LONG bytes = sizeof name;
  return RegQueryValueW(HKEY_CLASSES_ROOT, (L"Interface\\" + iid).c_str(), name, &bytes) == ERROR_SUCCESS
             ? name
             : L"?";
}

}  // namespace

bool CallCounts::IsOfCom(REFIID interface_id) { return interface_id == kRemUnknown; }

bool CallCounts::Note(REFIID interface_id, unsigned method) {
  ++counts_[TextOf(interface_id) + L":" + std::to_wstring(method)];
  const bool is_of_com = IsOfCom(interface_id);
  if (!is_of_com) ++total_;
  if (is_of_com && !CanRefuseOfCom(method)) return false;
  if (until_rejection_ == 0 || --until_rejection_ > 0) return false;
  if (and_later_) until_rejection_ = 1;
  ++rejected_;
  return true;
}

// A refused release would lose the reference for good. No object is asked, so only the filter can refuse.
bool CallCounts::CanRefuseOfCom(unsigned method) const {
  return method == kRemQueryInterface && answer_ == RefusalAnswer::kRejected;
}

long CallCounts::CountOf(const std::wstring& name) const {
  long sum = 0;
  for (const auto& [call, count] : counts_) {
    if (call == name || call.starts_with(name + L":")) sum += count;
  }
  return sum;
}

std::string CallCounts::Report() const {
  std::string report;
  for (const auto& [call, count] : counts_) {
    const std::wstring name = RegisteredName(call.substr(0, call.find(L':')));
    report += quillmate::com::ToUtf8(call + L" " + std::to_wstring(count) + L" " + name) + "\n";
  }
  return report;
}

void CallCounts::RejectNth(long n, bool and_later) {
  until_rejection_ = n;
  and_later_ = and_later;
}

}  // namespace testbrowser::shell

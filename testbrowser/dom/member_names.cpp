#include "dom/member_names.h"

#include <map>
#include <vector>

namespace testbrowser::dom {
namespace {

// Clear of the numbers of MSHTML's own members, which are small or negative.
constexpr DISPID kFirst = 0x10000000;

struct Names {
  std::map<std::wstring, DISPID, std::less<>> numbers;
  std::vector<std::wstring> names;
};

Names& Known() {
  static Names names;
  return names;
}

}  // namespace

DISPID NumberOfName(std::wstring_view name) {
  Names& known = Known();
  if (const auto found = known.numbers.find(name); found != known.numbers.end()) return found->second;
  const DISPID number = kFirst + static_cast<DISPID>(known.names.size());
  known.names.emplace_back(name);
  known.numbers.emplace(name, number);
  return number;
}

std::optional<std::wstring> NameOfNumber(DISPID number) {
  const Names& known = Known();
  if (number < kFirst || number - kFirst >= static_cast<DISPID>(known.names.size())) return std::nullopt;
  return known.names[static_cast<std::size_t>(number - kFirst)];
}

}  // namespace testbrowser::dom

#include "dom/member_names.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace testbrowser::dom {
namespace {

// Clear of the numbers of MSHTML's own members, which are small or negative.
constexpr DISPID kFirst = 0x10000000;
constexpr DISPID kFirstOwn = 0x20000000;

struct Names {
  std::map<std::wstring, DISPID, std::less<>> numbers;
  std::vector<std::wstring> names;
};

Names& Known() {
  static Names names;
  return names;
}

/// A kind of object, and the type library's number.
using OwnMember = std::pair<std::string_view, DISPID>;

std::vector<OwnMember>& OwnMembers() {
  static std::vector<OwnMember> members;
  return members;
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

DISPID OwnNumberOf(std::string_view kind, DISPID typed) {
  auto& known = OwnMembers();
  const OwnMember member(kind, typed);
  auto found = std::ranges::find(known, member);
  if (found == known.end()) found = known.insert(known.end(), member);
  return kFirstOwn + static_cast<DISPID>(found - known.begin());
}

std::optional<DISPID> TypedNumberOf(std::string_view kind, DISPID own) {
  const auto& known = OwnMembers();
  if (own < kFirstOwn || own - kFirstOwn >= static_cast<DISPID>(known.size())) return std::nullopt;
  const OwnMember& member = known[static_cast<std::size_t>(own - kFirstOwn)];
  return member.first == kind ? std::optional(member.second) : std::nullopt;
}

}  // namespace testbrowser::dom
